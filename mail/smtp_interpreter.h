#pragma once

// The SMTP commands. One arrival is one command or one chunk of a message, whatever line breaks it
// holds: its first four characters decide, inside a message too, so that a chunk which happens to
// begin with "Data" or "Quit" is that command. All state is the store's and so everybody's.
//
// Works without a socket: bytes in, a reply out, files in between.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mailbox_store.h"

namespace ModMail {

struct SmtpOutcome {
  /// To be sent with a line end; none if nothing is sent.
  std::optional<std::string_view> reply;
  /// A QUIT: belongs into the mail log before the reply is sent.
  bool quit = false;
  /// To be unpacked once the reply is sent.
  std::vector<ReceivedMessage> messages = {};
};

class SmtpInterpreter {
 public:
  explicit SmtpInterpreter(MailboxStore& store) : store_(store) {}

  /// What a completed message has been answered with is on the disk. Throws on a fault, which gets
  /// no reply.
  SmtpOutcome Interpret(std::string arrival);

 private:
  std::optional<std::string_view> StoreRecipient();
  std::optional<std::string_view> TakeChunk();
  SmtpOutcome Quit();

  MailboxStore& store_;
};

}  // namespace ModMail
