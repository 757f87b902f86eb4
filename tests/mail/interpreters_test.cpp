// The commands of both protocols and the settings without a socket: what conversations cannot show.

#include "mail/mail_options.h"
#include "mail/pop3_interpreter.h"
#include "mail/smtp_interpreter.h"
#include "tests/support/server_fixture.h"

namespace ModMail {
namespace {

namespace fs = std::filesystem;

class Interpreters : public test::ProgramFixture {
 protected:
  Interpreters() {
    options_.mailRoot = Home().Text("mailroot");
    fs::create_directories(Home().Path("mailroot/User/alice"));
  }
  // The reply without its line end.
  std::string Smtp(const std::string& said) {
    return std::string(smtp_.Interpret(said + "\r\n").reply.value_or("nothing"));
  }
  std::string Pop3(const std::string& said) {
    const Pop3Outcome outcome = pop3_.Interpret(said + "\r\n");
    const std::string reply = outcome.text + outcome.rest;
    return reply.substr(0, reply.rfind("\r\n"));
  }

  MailOptions options_;
  MailboxStore store_{Program(), options_};
  SmtpInterpreter smtp_{store_};
  Pop3Interpreter pop3_{store_};
};

TEST_F(Interpreters, ReachNoFileThroughAName) {
  const char* messages[] = {"outside/Message_1.eml", "mailroot/Message_1.eml"};
  for (const char* message : messages) Home().Write(message, "secret");
  Home().Write("outside/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n");
  for (const std::string& name :
       {std::string("../../outside"), std::string("..\\..\\outside"), Home().Text("outside"),
        std::string(".."), std::string("."), std::string("alice/../../../outside"),
        std::string("alice\\"), std::string(".. "), std::string(" "), std::string("a:b")}) {
    EXPECT_EQ(Smtp("MAIL FROM:<" + name + "@x>"), "550 Account not exist") << name;
    EXPECT_EQ(Smtp("RCPT TO:<" + name + "@x>"), "550 Account not exist") << name;
    Smtp("DATA");
    Smtp("x\r\n.");
    EXPECT_EQ(Pop3("USER " + name), "-ERR Account not exist") << name;
    EXPECT_EQ(Pop3("PASS x"), "-ERR") << name;
    EXPECT_EQ(Pop3("STAT"), "+OK 0 0") << name;
    EXPECT_EQ(Pop3("DELE 1"), "+OK") << name;
    EXPECT_EQ(Pop3("RETR 1"), "+OK 0\r\n.\r\n.") << name;
  }
  for (const char* message : messages) EXPECT_EQ(Home().Read(message), "secret");
}

#ifndef _WIN32
TEST_F(Interpreters, AMessageThatCannotBeOpenedIsAFaultOrCode550) {
  fs::create_symlink("nowhere", Home().Path("mailroot/User/alice/Message_1.eml"));
  Pop3("USER alice");
  EXPECT_THROW(Pop3("STAT"), MailFault);
  EXPECT_THROW(Pop3("LIST"), MailFault);
  EXPECT_EQ(Pop3("RETR 1"), "+OK 0\r\n550");
}
#endif

TEST_F(Interpreters, SettingsHaveTheirDefaultsOnlyWhileTheFileIsMissing) {
  options_.LoadMailOptions(Program(), "192.0.2.7");
  EXPECT_EQ(options_.mailDomain, "localhost");
  EXPECT_EQ(options_.smtpPort, 25);
  // A port that cannot be converted leaves the former one; keys are known in any case.
  Home().Write("Server.ini", "[MailServer Options]\nSMTP Port=65536\nPOP3 port=1100\n");
  options_.LoadMailOptions(Program(), "192.0.2.7");
  EXPECT_EQ(options_.mailDomain, "");
  EXPECT_EQ(options_.smtpPort, 25);
  EXPECT_EQ(options_.pop3Port, 1100);
}

}  // namespace
}  // namespace ModMail
