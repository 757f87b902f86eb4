#pragma once

// The POP3 commands: the bytes of one arrival in, its answer out. One arrival is one command, told
// by its first four characters. There is no login and no state of a connection: every command acts,
// at any time, on the user that any client named last. Where clients have to sign in, a session has
// a state of its own and acts on the mailbox of its user. Deletion is immediate and final.
//
// The interpreter works without a socket. It changes the session state and the mailboxes, both
// through the store, and leaves the sending of a message to its caller.

#include <optional>
#include <string>
#include <string_view>

#include "core/command_table.h"
#include "core/protection.h"
#include "mail/mailbox_store.h"
#include "mail/pop3_session.h"

namespace ModMail {

/// What is sent: `text`, then the message and a zero byte if there is a message, then `rest`. Both
/// texts include their line ends.
struct Pop3Outcome {
  std::string text;
  std::optional<StoredMessage> message = std::nullopt;
  std::string rest = {};
  /// No zero byte follows the message.
  bool endsOnce = false;
  /// The command was a QUIT, to be logged before the reply is sent.
  bool quit = false;
  /// The command was a RETR, and whose mailbox it read.
  bool retrieves = false;
  std::string user = {};
  /// The command was a PASS, and this is to be tried. The answer is made afterwards.
  std::optional<std::string> password = std::nullopt;
};

class Pop3Interpreter {
 public:
  /// Both must outlive the interpreter.
  Pop3Interpreter(MailboxStore& store, const core::Protection& protection)
      : store_(store), protection_(protection) {}

  /// Runs one command. Throws MailFault if the command cannot be carried out, in which case nothing
  /// of its answer is sent.
  Pop3Outcome Interpret(std::string_view arrival, Pop3Session& session);

  /// The answer to a PASS whose password has been tried.
  Pop3Outcome EndSignIn(Pop3Session& session, core::Accounts::Answer answer);

 private:
  struct Request {
    std::string_view text;
    Pop3Session& session;
  };
  using Command = core::Command<Pop3Interpreter, Request, Pop3Outcome>;

  const Command* Find(std::string_view word) const;

  Pop3Outcome OnUser(Request request);
  Pop3Outcome OnUserName(Request request);
  Pop3Outcome OnPass(Request request);
  Pop3Outcome OnPassword(Request request);
  Pop3Outcome OnStat(Request);
  Pop3Outcome OnList(Request);
  Pop3Outcome OnRetr(Request request);
  Pop3Outcome OnDele(Request request);
  Pop3Outcome OnUidl(Request);
  Pop3Outcome OnRest(Request request);
  Pop3Outcome OnQuit(Request request);

  MailboxStore& store_;
  const core::Protection& protection_;
};

}  // namespace ModMail
