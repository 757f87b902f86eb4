#pragma once

// Reports the message that SMTP receives: for whom it is, its subject, and what becomes of it. Like
// the state of the transfer, there is one for all connections. Does nothing while nobody observes.

#include <string>

#include "mail/mail_options.h"
#include "mail/mailbox_store.h"
#include "mail/smtp_interpreter.h"
#include "net/connection.h"

namespace ModMail {

class ReceiptReport {
 public:
  /// Both must outlive this object.
  ReceiptReport(MailboxStore& store, const MailOptions& options)
      : store_(store), options_(options) {}

  /// To be called for each chunk that the interpreter took from `client`.
  void Note(net::Connection& client, const SmtpOutcome::Chunk& chunk);

  /// Whether a message from `client` has begun and not ended. What looks like a command may be a
  /// part of it.
  bool IsReceiving(const net::Connection& client) const;

 private:
  net::Activity NewActivity() const;
  void ReadSubject(net::Connection& client, bool isLast);

  MailboxStore& store_;
  const MailOptions& options_;
  std::string beginning_;  // until the subject has been read
  bool awaitsSubject_ = false;
  std::string subject_;
  bool isLost_ = false;  // something of the message could not be stored
};

}  // namespace ModMail
