#pragma once

// The SMTP commands: the bytes of one arrival in, its reply out. One arrival is one command or one
// chunk of a message, whatever line breaks it contains. Its first four characters decide, inside a
// message too: a chunk that happens to begin with "Data" or "Quit" is that command. All state is in
// the store and so shared by all connections.
//
// The interpreter works without a socket. It changes the session state and the mailboxes, both
// through the store.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/command_table.h"
#include "mail/honest_receipt.h"
#include "mail/mailbox_store.h"

namespace ModMail {

struct SmtpOutcome {
  struct Chunk {
    bool isFirst = false;
    bool isLast = false;
    bool isStored = false;  // for every recipient
  };

  /// Sent with a line end; none if nothing is sent.
  std::optional<std::string_view> reply;
  /// The command was a QUIT, to be logged before the reply is sent.
  bool quit = false;
  /// To be unpacked once the reply is sent.
  std::vector<ReceivedMessage> messages = {};
  /// The arrival was a chunk of a message.
  std::optional<Chunk> chunk = std::nullopt;
  /// What arrived with it and is still to be interpreted.
  std::string rest = {};
};

class SmtpInterpreter {
 public:
  /// Both must outlive the interpreter.
  SmtpInterpreter(MailboxStore& store, const core::Protection& protection)
      : store_(store), honest_(store, protection) {}

  /// Runs one command or takes one chunk. When the reply acknowledges a message, the message is on
  /// the disk. Throws MailFault if the command cannot be carried out; it then has no reply.
  SmtpOutcome Interpret(std::string arrival);

  /// The session ends, of which the store has the state.
  void Abandon() { honest_.Abandon(); }

  /// Whether it would take the arrival as a chunk of a message that has a recipient.
  bool IsChunk(std::string_view arrival) const;

 private:
  using Command = core::Command<SmtpInterpreter, std::string_view, SmtpOutcome>;

  static const Command* Find(std::string_view word);

  SmtpOutcome OnMail(std::string_view command);
  SmtpOutcome OnRcpt(std::string_view command);
  SmtpOutcome OnData(std::string_view);
  SmtpOutcome OnQuit(std::string_view);
  SmtpOutcome TakeChunk();
  SmtpOutcome TakePart();
  void StoreRecipient();

  MailboxStore& store_;
  HonestReceipt honest_;
};

}  // namespace ModMail
