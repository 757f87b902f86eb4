#include "mail/mail_options.h"

#include "core/service_environment.h"
#include "settings/section.h"

namespace ModMail {
namespace {

constexpr std::string_view kSection = "MailServer Options";

}  // namespace

void MailOptions::LoadMailOptions(const settings::Program& program,
                                  const std::string& machineAddress) {
  const settings::Section settings(program, kSection);
  settingsFault = settings.Fault();
  if (settingsFault) return;
  if (!settings.FileExists()) return SetDefaults(program);
  ReadSettings(settings, machineAddress);
}

void MailOptions::ReadSettings(const settings::Section& settings,
                               const std::string& machineAddress) {
  mailRoot = settings.Path("MailServer Root");
  settings.Read("SMTP Port", smtpPort);
  settings.Read("POP3 Port", pop3Port);
  mailDomain = settings.Text("DNS");
  localAddress = machineAddress;
}

void MailOptions::SetDefaults(const settings::Program& program) {
  mailRoot = program.File("mailroot");
  smtpPort = 25;
  pop3Port = 110;
  mailDomain = core::kDefaultDomain;
  localAddress = "127.0.0.1";
}

}  // namespace ModMail
