#pragma once

// The POP3 commands: the bytes of one arrival in, its answer out. One arrival is one command, told
// by its first four characters. There is no login and no state of a connection: every command acts,
// at any time, on the user that any client named last. Deletion is immediate and final.
//
// The interpreter works without a socket. It changes the session state and the mailboxes, both
// through the store, and leaves the sending of a message to its caller.

#include <optional>
#include <string>
#include <string_view>

#include "core/command_table.h"
#include "mail/mailbox_store.h"

namespace ModMail {

/// What is sent: `text`, then the message and a zero byte if there is a message, then `rest`. Both
/// texts include their line ends.
struct Pop3Outcome {
  std::string text;
  std::optional<StoredMessage> message = std::nullopt;
  std::string rest = {};
  /// The command was a QUIT, to be logged before the reply is sent.
  bool quit = false;
  /// The command was a RETR.
  bool retrieves = false;
};

class Pop3Interpreter {
 public:
  /// `store` must outlive the interpreter.
  explicit Pop3Interpreter(MailboxStore& store) : store_(store) {}

  /// Runs one command. Throws MailFault if the command cannot be carried out, in which case nothing
  /// of its answer is sent.
  Pop3Outcome Interpret(std::string_view arrival);

 private:
  using Command = core::Command<Pop3Interpreter, std::string_view, Pop3Outcome>;

  static const Command* Find(std::string_view word);

  Pop3Outcome OnUser(std::string_view command);
  Pop3Outcome OnPass(std::string_view command);
  Pop3Outcome OnStat(std::string_view);
  Pop3Outcome OnList(std::string_view);
  Pop3Outcome OnRetr(std::string_view command);
  Pop3Outcome OnDele(std::string_view command);
  Pop3Outcome OnUidl(std::string_view);
  Pop3Outcome OnRest(std::string_view);
  Pop3Outcome OnQuit(std::string_view);

  MailboxStore& store_;
};

}  // namespace ModMail
