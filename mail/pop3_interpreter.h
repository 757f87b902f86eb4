#pragma once

// The POP3 commands. One arrival is one command, told by its first four characters. There is no
// login and no state of a connection: every command acts, at any time, on the user who was named
// last by anyone. Deleting is at once and for good.
//
// Works without a socket: bytes in, replies out, files in between.

#include <optional>
#include <string>
#include <string_view>

#include "mail/mailbox_store.h"

namespace ModMail {

/// What is sent: `text`, then the message with a zero byte behind it, then `rest`. All with their
/// line ends.
struct Pop3Outcome {
  std::string text;
  std::optional<StoredMessage> message = std::nullopt;
  std::string rest = {};
  /// A QUIT: belongs into the mail log.
  bool quit = false;
};

class Pop3Interpreter {
 public:
  explicit Pop3Interpreter(MailboxStore& store) : store_(store) {}

  /// Throws on a fault, before anything is to be sent.
  Pop3Outcome Interpret(std::string_view arrival);

 private:
  std::string Stat();
  std::string List();
  std::string Uidl();
  Pop3Outcome Retr(std::string_view text);
  void Dele(std::string_view text);
  void Reset();

  MailboxStore& store_;
};

/// A reply as it is sent.
std::string Line(std::string_view reply);

}  // namespace ModMail
