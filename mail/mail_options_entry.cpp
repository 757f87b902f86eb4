#include "mail/mail_options_entry.h"

#include "platform/native_path.h"
#include "text/strings.h"

namespace ModMail {
namespace {

using text::TrimBlanks;

}  // namespace

MailOptionsEntry EntryOf(const MailOptions& options) {
  return {.localIP = options.localAddress,
          .smtpPort = std::to_string(options.smtpPort),
          .pop3Port = std::to_string(options.pop3Port),
          .domain = options.mailDomain,
          .root = platform::PathTextForUser(options.mailRoot)};
}

std::optional<MailOptionsFault> FindFault(const MailOptionsEntry& entry) {
  if (TrimBlanks(entry.domain).empty()) return MailOptionsFault::kNoDomain;
  if (TrimBlanks(entry.root).empty()) return MailOptionsFault::kNoRoot;
  return std::nullopt;
}

void WriteSettings(settings::Change& change, const MailOptionsEntry& entry) {
  const settings::SectionChange settings = change.In("MailServer Options");
  settings.Write("IP", TrimBlanks(entry.localIP));
  // Read as "SMTP Port": keys are known in any case, and existing files have both spellings.
  settings.Write("SMTP port", TrimBlanks(entry.smtpPort));
  settings.Write("POP3 Port", TrimBlanks(entry.pop3Port));
  settings.Write("DNS", TrimBlanks(entry.domain));
  settings.Write("MailServer Root", TrimBlanks(entry.root));
}

}  // namespace ModMail
