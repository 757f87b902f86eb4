// The commands of both protocols without a socket. Conversations hold what is answered over the
// wire; this tests what does not show there.

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
    for (const char* user : {"alice", "bob"}) {
      fs::create_directories(Home().Path("mailroot/User") / user);
    }
  }
  std::string Smtp(const std::string& said) {
    return std::string(smtp_.Interpret(said + "\r\n").reply.value_or("nothing"));
  }
  std::string Pop3(const std::string& said) {
    const Pop3Outcome outcome = pop3_.Interpret(said + "\r\n");
    return outcome.text + outcome.rest;
  }
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(Home().Native())) {
      names.push_back(entry.path().string());
    }
    std::sort(names.begin(), names.end());
    return names;
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
  const std::string absolute = Home().Native().string() + "/outside";
  const std::vector<std::string> before = Files();
  for (const std::string& name :
       {std::string("../../outside"), std::string("..\\..\\outside"), absolute, std::string(".."),
        std::string("."), std::string("alice/../../../outside"), std::string("alice\\"),
        std::string(".. "), std::string(" "), std::string("a:b"), std::string("x\0y", 3),
        std::string(300, 'x'), std::string(20000, '.'), std::string("\xFF\xFE")}) {
    const std::pair<std::string, std::string> smtp[] = {
        {"MAIL FROM:<" + name + "@x>", "550 Account not exist"},
        {"RCPT TO:<" + name + "@x>", "550 Account not exist"},
        {"DATA", "354 Enter mail,end with."},
        {"x\r\n.", "250 OK,message saved"}};
    for (const auto& [said, answered] : smtp) EXPECT_EQ(Smtp(said), answered) << said;
    const std::pair<std::string, std::string> pop3[] = {{"USER " + name, "-ERR Account not exist"},
                                                        {"PASS x", "-ERR"},
                                                        {"STAT", "+OK 0 0"},
                                                        {"DELE 1", "+OK"},
                                                        {"RETR 1", "+OK 0\r\n.\r\n."}};
    for (const auto& [said, answered] : pop3) EXPECT_EQ(Pop3(said), answered + "\r\n") << said;
  }
  EXPECT_EQ(Files(), before);
}

TEST_F(Interpreters, AQuitTakesTheRecipientsOfTheLastNumber) {
  for (const char* said : {"RCPT TO:<bob@x>", "RCPT TO:<alice@x>", "RCPT TO:<bob@x>"}) Smtp(said);
  Home().Write("mailroot/User/bob/Message_1.eml", "x");
  EXPECT_EQ(Smtp("chunk"), "nothing");
  const SmtpOutcome outcome = smtp_.Interpret("QUIT");
  const std::string root = options_.mailRoot;
  EXPECT_TRUE(outcome.quit);
  EXPECT_EQ(outcome.messages,
            (std::vector<ReceivedMessage>{{2, "bob", root}, {2, "alice", root}, {2, "bob", root}}));
  EXPECT_TRUE(smtp_.Interpret("QUIT").messages.empty());
  EXPECT_TRUE(pop3_.Interpret("QUIT").quit);
  EXPECT_EQ(store_.State().currentUser, "");
}

#ifndef _WIN32
TEST_F(Interpreters, AMessageThatCannotBeOpenedIsAFaultOrCode550) {
  fs::create_symlink("nowhere", Home().Path("mailroot/User/bob/Message_1.eml"));
  Pop3("USER bob");
  EXPECT_THROW(Pop3("STAT"), MailFault);
  EXPECT_THROW(Pop3("LIST"), MailFault);
  EXPECT_EQ(Pop3("RETR 1"), "+OK 0\r\n550\r\n");
}
#endif

}  // namespace
}  // namespace ModMail
