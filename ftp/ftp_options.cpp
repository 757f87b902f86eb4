#include "ftp/ftp_options.h"

#include "core/service_environment.h"
#include "settings/section.h"

namespace ModFtp {
namespace {

constexpr std::string_view kSection = "FtpServer Options";

}  // namespace

bool FtpOptions::LoadFtpOptions(const settings::Program& program, const std::string& localAddress) {
  const settings::Section settings(program, kSection);
  settingsFault = settings.Fault();
  if (settingsFault) return false;
  if (settings.FileExists()) return ReadSettings(settings, localAddress);
  SetDefaults(program);
  return true;
}

bool FtpOptions::ReadSettings(const settings::Section& settings, const std::string& localAddress) {
  ftpRoot = settings.Path("FtpServer Root");
  if (!settings.Read("FtpPort", ftpPort)) return false;
  ftpDomain = settings.Text("DNS");
  ftpLocalAddress = localAddress;
  uploadDir = settings.Path("FtpServer UploadDir");
  FtpRights = settings::ReadAccessRights(settings);
  return true;
}

void FtpOptions::SetDefaults(const settings::Program& program) {
  ftpRoot = program.File("ftproot");
  ftpPort = 21;
  ftpDomain = core::kDefaultDomain;
  ftpLocalAddress = "127.0.0.1";
  FtpRights = {"0", "0", "0"};
}

}  // namespace ModFtp
