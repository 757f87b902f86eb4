#pragma once

// A mail server with two mailboxes, alice (password "wonder") and bob ("builder"), and clients that
// speak to it one command at a time.

#include <memory>
#include <string>

#include "mail/mail_server.h"
#include "tests/support/server_fixture.h"

namespace test {

/// A connection whose greeting has been read.
class MailClient : public Client {
 public:
  explicit MailClient(std::uint16_t port) : Client(port) { greeting = ReceiveLine(); }

  /// Sends `command` and a line end in one arrival; the reply without its line end.
  std::string Ask(const std::string& command);

  std::string greeting;
};

class MailFixture : public ServerFixture<ModMail::MailServer> {
 protected:
  void SetUp() override;

  static std::string Box(const std::string& user) { return "mailroot/User/" + user + "/"; }
  static std::string Message(const std::string& user, int number);

  /// A file among those of the mail server.
  void Put(const std::string& name, const std::string& content) const {
    Home().Write(name, content);
  }
  std::string Read(const std::string& name) const { return Home().Read(name); }

  /// Waits until what a QUIT has handed over is unpacked.
  bool IsUnpacked();

  std::uint16_t smtpPort_ = 0;
  std::uint16_t pop3Port_ = 0;
};

}  // namespace test
