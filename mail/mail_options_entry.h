#pragma once

// The mail server's options as a user enters them: texts as typed, to be checked and written. What
// is written takes effect when the options are loaded next (mail/mail_options.h).

#include <optional>
#include <string>

#include "mail/mail_options.h"
#include "settings/change.h"

namespace ModMail {

struct MailOptionsEntry {
  std::string localIP;
  std::string smtpPort;
  std::string pop3Port;
  std::string domain;
  std::string root;  // in the user's own form
};

enum class MailOptionsFault { kNoDomain, kNoRoot };

/// What is held in memory.
MailOptionsEntry EntryOf(const MailOptions& options);

/// The first thing that keeps `entry` from being saved. Blanks are nothing.
std::optional<MailOptionsFault> FindFault(const MailOptionsEntry& entry);

/// Puts every key into a change of Server.ini, the texts trimmed.
void WriteSettings(settings::Change& change, const MailOptionsEntry& entry);

}  // namespace ModMail
