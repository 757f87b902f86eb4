#include "ftp/ftp_options.h"

#include "core/settings_section.h"

namespace ModFtp {
namespace {

constexpr std::string_view kSection = "FtpServer Options";

}  // namespace

bool FtpOptions::LoadFtpOptions(const core::Program& program, const std::string& localAddress) {
  const core::SettingsSection settings(program, kSection);
  settingsFault = settings.Fault();
  if (settingsFault) return false;
  if (settings.FileExists()) return ReadSettings(settings, localAddress);
  SetDefaults(program);
  return true;
}

bool FtpOptions::ReadSettings(const core::SettingsSection& settings,
                              const std::string& localAddress) {
  ftpRoot = settings.Path("FtpServer Root");
  if (!settings.Read("FtpPort", ftpPort)) return false;
  ftpDomain = settings.Text("DNS");
  ftpLocalAddress = localAddress;
  uploadDir = settings.Path("FtpServer UploadDir");
  FtpRights = core::ReadAccessRights(settings);
  return true;
}

void FtpOptions::SetDefaults(const core::Program& program) {
  ftpRoot = program.File("ftproot");
  ftpPort = 21;
  ftpDomain = core::kDefaultDomain;
  ftpLocalAddress = "127.0.0.1";
  FtpRights = {"0", "0", "0"};
}

}  // namespace ModFtp
