#pragma once

// Receives messages so that what is acknowledged is kept, if the user wants that: a message goes to
// a number that is free in every recipient's mailbox; it ends at its own last line, wherever
// arrivals are divided, and nothing in it is a command; a message that cannot be stored is refused
// at its end and leaves no file. Otherwise the interpreter's own, simpler ways hold.
//
// The state of a message is that of the session (mail/mail_session.h).

#include <optional>
#include <string>
#include <string_view>

#include "core/protection.h"
#include "mail/mailbox_store.h"

namespace ModMail {

class HonestReceipt {
 public:
  struct Progress {
    bool isFirst = false;
    bool isStored = false;
    /// At the end of the message: the reply, and what arrived behind the message.
    std::optional<std::string_view> reply = std::nullopt;
    std::string rest = {};
    std::vector<ReceivedMessage> messages = {};  // to be unpacked
  };

  /// Both must outlive this object.
  HonestReceipt(MailboxStore& store, const core::Protection& protection)
      : store_(store), protection_(protection) {}

  bool IsWanted() const { return protection_.KeepsWhatItAcknowledges(); }

  /// Why the current user cannot be a recipient of the next message; none if he can.
  std::optional<std::string_view> WhyNoRecipient() const;

  /// What DATA is answered. The message begins unless it has no recipient.
  std::string_view Begin();

  /// Whether what arrives belongs to a message.
  bool IsInMessage() const { return store_.State().message.isInside; }

  Progress Take(std::string_view arrival);

  /// The session ends. A message that has not is removed.
  void Abandon();

 private:
  void ChooseNumber();
  void Store(std::string_view bytes, bool isLast);
  void Refuse(std::string_view reply);
  void Finish(Progress& progress);

  MailboxStore& store_;
  const core::Protection& protection_;
};

}  // namespace ModMail
