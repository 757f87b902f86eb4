#pragma once

// A mail server with the mailboxes of alice and bob, and clients that send it one command at a
// time.

#include <string>

#include "mail/mail_server.h"
#include "platform/native_path.h"
#include "tests/support/server_fixture.h"

namespace test {

/// A connection; its greeting has been read.
class MailClient : public Client {
 public:
  explicit MailClient(std::uint16_t port) : Client(port) { ReceiveLine(); }

  /// Sends `command` and a line end as one arrival. Returns the reply without its line end.
  std::string Ask(const std::string& command) {
    Send(command + "\r\n");
    const std::string reply = ReceiveLine();
    return reply.substr(0, reply.rfind("\r\n"));
  }
};

class MailFixture : public ServerFixture<ModMail::MailServer> {
 protected:
  void SetUp() override {
    Home().Write("Server.ini", "[MailServer Options]\nSMTP Port=0\nPOP3 Port=0\nMailServer Root=" +
                                   platform::PathTextForUser(Home().Text("mailroot")) + "\n");
    for (const char* user : {"alice", "bob"}) Home().Write(Box(user) + "UserInfo.ini", "");
    ASSERT_TRUE(StartServer()) << ErrorLog();
    OnLoop([&] {
      smtpPort_ = TheServer().SmtpPort();
      pop3Port_ = TheServer().Pop3Port();
    });
  }

  static std::string Box(const std::string& user) { return "mailroot/User/" + user + "/"; }

  std::uint16_t smtpPort_ = 0;
  std::uint16_t pop3Port_ = 0;
};

}  // namespace test
