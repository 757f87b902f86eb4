#include "mail/mail_options.h"

#include "core/service_environment.h"
#include "settings/section.h"

namespace ModMail {
namespace {

using settings::Form;
using settings::Refusal;

}  // namespace

void MailOptions::LoadMailOptions(const settings::Program& program,
                                  const std::string& machineAddress) {
  const settings::Section section(program, kSettingsSection);
  settingsFault = section.Fault();
  if (settingsFault) return;
  if (!section.FileExists()) return SetDefaults(program);
  settings::Load(section, Describe());
  localAddress = machineAddress;
}

void MailOptions::EnsureMailRoot(const settings::Program& program) {
  if (mailRoot.empty()) mailRoot = settings::Section(program, kSettingsSection).Path(kMailRootKey);
}

void MailOptions::SetDefaults(const settings::Program& program) {
  settings::SetDefaults(program, Describe());
}

settings::Table MailOptions::Describe() {
  const Refusal noDomain{1, Refusal::If::kBlank, "本地域名不能为空！"};
  const Refusal noRoot{2, Refusal::If::kBlank, "主目录不能为空！"};
  return {
      .section = kSettingsSection,
      .settings = {{"IP", Form::kAddress, &localAddress, "127.0.0.1", "txtMailIP"},
                   // Keys ignore case, and existing files have both spellings.
                   {"SMTP Port", Form::kNumber, &smtpPort, "25", "txtSMTPPort", {}, "SMTP port"},
                   {"POP3 Port", Form::kNumber, &pop3Port, "110", "txtPop3Port"},
                   {"DNS", Form::kText, &mailDomain, core::kDefaultDomain, "txtMailAddress",
                    noDomain},
                   {kMailRootKey, Form::kPath, &mailRoot, "mailroot", "txtMailRootDir", noRoot}},
      .entriesAreTrimmed = true};
}

}  // namespace ModMail
