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
  std::string Pop3(const std::string& said) {
    const Pop3Outcome outcome = pop3_.Interpret(said + "\r\n");
    return outcome.text + outcome.rest;
  }

  MailOptions options_;
  MailboxStore store_{Program(), options_};
  SmtpInterpreter smtp_{store_};
  Pop3Interpreter pop3_{store_};
};

TEST_F(Interpreters, ReachNoFileThroughAName) {
  Home().Write("outside/Message_1.eml", "secret");
  Home().Write("outside/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n");
  Home().Write("mailroot/Message_1.eml", "secret");
  for (const std::string& name :
       {std::string("../../outside"), std::string("..\\..\\outside"), Home().Text("outside"),
        std::string(".."), std::string("."), std::string("alice/../../../outside"),
        std::string("alice\\"), std::string(".. "), std::string(" "), std::string("a:b"),
        std::string("x\0y", 3), std::string(300, 'x'), std::string(20000, '.')}) {
    for (const char* command : {"MAIL FROM:<", "RCPT TO:<"}) {
      const SmtpOutcome outcome = smtp_.Interpret(command + name + "@x>\r\n");
      EXPECT_EQ(outcome.reply, "550 Account not exist") << name;
    }
    smtp_.Interpret("DATA\r\n");
    EXPECT_EQ(smtp_.Interpret("x\r\n.\r\n").reply, "250 OK,message saved");
    const std::pair<std::string, std::string> pop3[] = {{"USER " + name, "-ERR Account not exist"},
                                                        {"PASS x", "-ERR"},
                                                        {"STAT", "+OK 0 0"},
                                                        {"DELE 1", "+OK"},
                                                        {"RETR 1", "+OK 0\r\n.\r\n."}};
    for (const auto& [said, answered] : pop3) EXPECT_EQ(Pop3(said), answered + "\r\n") << said;
  }
  for (const char* message : {"outside/Message_1.eml", "mailroot/Message_1.eml"}) {
    EXPECT_EQ(Home().Read(message), "secret");
  }
}

#ifndef _WIN32
TEST_F(Interpreters, AMessageThatCannotBeOpenedIsAFaultOrCode550) {
  fs::create_symlink("nowhere", Home().Path("mailroot/User/alice/Message_1.eml"));
  Pop3("USER alice");
  EXPECT_THROW(Pop3("STAT"), MailFault);
  EXPECT_THROW(Pop3("LIST"), MailFault);
  EXPECT_EQ(Pop3("RETR 1"), "+OK 0\r\n550\r\n");
}
#endif

TEST_F(Interpreters, SettingsHaveTheirDefaultsOnlyWhileTheFileIsMissing) {
  const auto loaded = [this] {
    options_.LoadMailOptions(Program(), "192.0.2.7");
    return std::tuple(options_.mailDomain, options_.smtpPort, options_.pop3Port);
  };
  EXPECT_EQ(loaded(), std::tuple("localhost", 25, 110));
  EXPECT_EQ(options_.mailRoot, Home().Text("mailroot"));
  // A port that cannot be converted leaves the former one; keys are known in any case.
  Home().Write("Server.ini", "[MailServer Options]\nSMTP Port=65536\nPOP3 port=1100\n");
  EXPECT_EQ(loaded(), std::tuple("", 25, 1100));
  EXPECT_EQ(options_.mailRoot, "");
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("SMTP Port"));
}

}  // namespace
}  // namespace ModMail
