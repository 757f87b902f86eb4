#include "tests/mail/mail_fixture.h"

#include "platform/native_path.h"

namespace test {

std::string MailClient::Ask(const std::string& command) {
  Send(command + "\r\n");
  std::string reply = ReceiveLine();
  if (reply.ends_with("\r\n")) reply.resize(reply.size() - 2);
  return reply;
}

void MailFixture::SetUp() {
  Put("Server.ini", "[MailServer Options]\r\nSMTP Port=0\r\nPOP3 Port=0\r\nDNS=tarnwerk.test\r\n" +
                        std::string("MailServer Root=") +
                        platform::PathTextForUser(Home().Text("mailroot")) + "\r\n");
  Put(Box("alice") + "UserInfo.ini", "[用户信息]\r\nUser=alice\r\nPassword=wonder\r\n");
  Put(Box("bob") + "UserInfo.ini", "[用户信息]\r\nUser=bob\r\nPassword=builder\r\n");
  ASSERT_TRUE(StartServer()) << ErrorLog();
  OnLoop([&] {
    smtpPort_ = TheServer().SmtpPort();
    pop3Port_ = TheServer().Pop3Port();
  });
}

std::string MailFixture::Message(const std::string& user, int number) {
  return Box(user) + "Message_" + std::to_string(number) + ".eml";
}

bool MailFixture::IsUnpacked() {
  return Eventually([&] { return TheServer().HasUnpackedAll(); });
}

}  // namespace test
