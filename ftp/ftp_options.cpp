#include "ftp/ftp_options.h"

#include "core/service_environment.h"
#include "settings/section.h"

namespace ModFtp {
namespace {

using settings::Form;
using settings::Refusal;

}  // namespace

bool FtpOptions::LoadFtpOptions(const settings::Program& program, const std::string& localAddress) {
  const settings::Section section(program, kSettingsSection);
  settingsFault = section.Fault();
  if (settingsFault) return false;
  if (!section.FileExists()) {
    SetDefaults(program);
    return true;
  }
  // The root is taken even if the port then ends the loading.
  ftpRoot = section.Path(kRootKey);
  if (!settings::LoadUntilRefused(section, Describe())) return false;
  ftpLocalAddress = localAddress;
  return true;
}

void FtpOptions::SetDefaults(const settings::Program& program) {
  settings::SetDefaults(program, Describe());
}

settings::Entry FtpOptions::EntryToShow(const settings::Program& program) const {
  FtpOptions shown = *this;
  const settings::Section section(program, kSettingsSection);
  if (section.FileExists()) settings::Load(section, shown.Describe());
  return settings::EntryOf(shown.Describe());
}

settings::Table FtpOptions::Describe() {
  const Refusal noDomain{1, Refusal::If::kBlank, "本地域名不能为空！"};
  const Refusal noRoot{2, Refusal::If::kBlank, "主目录不能为空！"};
  const Refusal noUploadDir{3, Refusal::If::kBlank, "上传目录不能为空！"};
  return {kSettingsSection,
          {{"IP", Form::kAddress, &ftpLocalAddress, "127.0.0.1", "txtFtpIP"},
           {"FtpPort", Form::kNumber, &ftpPort, "21", "txtFtpPort"},
           {"DNS", Form::kText, &ftpDomain, core::kDefaultDomain, "txtFtpAddress", noDomain},
           {kRootKey, Form::kPath, &ftpRoot, "ftproot", "txtFtpDir", noRoot},
           {kUploadDirKey, Form::kPath, &uploadDir, {}, "txtFtpUploadDir", noUploadDir},
           {"Read", Form::kCheck, &FtpRights[0], "0", "chkRead"},
           {"Write", Form::kCheck, &FtpRights[1], "0", "chkWrite"},
           {"ContralAll", Form::kCheck, &FtpRights[2], "0", "chkContralAll"}}};
}

}  // namespace ModFtp
