#include <string>

#include "tests/mail/mail_fixture.h"

namespace {

using test::MailClient;
using testing::HasSubstr;
using testing::MatchesRegex;

class Pop3 : public test::MailFixture {
 protected:
  void SetUp() override {
    MailFixture::SetUp();
    client_ = std::make_unique<MailClient>(pop3Port_);
  }
  std::string Ask(const std::string& command) { return client_->Ask(command); }

  /// The reply to `command`, and whatever comes up to the reply to a NOOP behind it.
  std::string AskAll(const std::string& command) {
    client_->Send(command + "\r\n");
    const std::string reply = client_->ReceiveLine();
    std::string all = reply + client_->ReceiveFor(std::chrono::milliseconds(60));
    EXPECT_EQ(Ask("NOOP"), "+OK");
    return all;
  }

  std::unique_ptr<MailClient> client_;
};

TEST_F(Pop3, AnswersEachCommandWithItsSettledText) {
  EXPECT_EQ(client_->greeting, "+OK  POP3 service ready \r\n");
  for (const char* word : {"AUTH", "NOOP", "noop x", "APOP alice 1234", "REST", "QUIT"}) {
    EXPECT_EQ(Ask(word), "+OK") << word;
  }
  for (const char* word : {"RSET", "TOP 1 0", "TOP", "XYZZY", ""}) {
    EXPECT_EQ(Ask(word), "") << word;
  }
  client_->Send("TOP");  // three characters and nothing else
  EXPECT_EQ(client_->ReceiveLine(), "+OK\r\n");
  EXPECT_EQ(AskAll("CAPA"), "+OK Capability list follows\r\n.\r\n");
}

TEST_F(Pop3, ComparesNamesByFolderAndPasswordsByteForByte) {
  EXPECT_EQ(Ask("USER carol"), "-ERR Account not exist");
  EXPECT_EQ(Ask("PASS wonder"), "-ERR") << "no mailbox, no password";
  EXPECT_EQ(Ask("USER alice"), "+OK");
  for (const char* password : {"Wonder", "wonder ", " wonder", "wonde", "", "wonder x"}) {
    EXPECT_EQ(Ask(std::string("PASS ") + password), "-ERR") << password;
  }
  EXPECT_EQ(Ask("PASS"), "-ERR");
  EXPECT_EQ(Ask("PASS wonder"), "+OK");
  EXPECT_EQ(Ask("USER"), "+OK") << "nobody: the folder of all accounts";
  EXPECT_EQ(Ask("PASS "), "-ERR");
}

TEST_F(Pop3, AMailboxWithoutIniFileRefusesEveryPasswordAndOneWithoutKeyTakesTheEmptyOne) {
  Put(Box("bare") + "Message_1.eml", "x");
  Ask("USER bare");
  EXPECT_EQ(Ask("PASS "), "-ERR");
  Put(Box("bare") + "other.ini", "");
  EXPECT_EQ(Ask("PASS "), "+OK");
  EXPECT_EQ(Ask("PASS x"), "-ERR");
}

TEST_F(Pop3, NeedsNoLogin) {
  Put(Message("bob", 1), "x");
  Ask("USER bob");
  EXPECT_EQ(Ask("PASS wrong"), "-ERR");
  EXPECT_EQ(Ask("STAT"), "+OK 1 1");
  EXPECT_EQ(Ask("DELE 1"), "+OK");
  EXPECT_FALSE(Home().Has(Message("bob", 1)));
}

TEST_F(Pop3, ListsInTheOrderOfUpperCasedNames) {
  Ask("USER bob");
  for (const int number : {1, 2, 10, 11}) {
    Put(Message("bob", number), std::string(static_cast<std::size_t>(number), 'x'));
  }
  Put(Box("bob") + "note\u2028.EML", "note");  // one entry is one line
  Put(Box("bob") + "Message_1/Content.txt", "unpacked");
  Put(Box("bob") + "folder.eml/x", "no message");
  EXPECT_EQ(AskAll("UIDL"),
            "+OK \r\n1 Message_1.eml \r\n2 Message_10.eml \r\n3 Message_11.eml \r\n"
            "4 Message_2.eml \r\n5 note?.EML \r\n.\r\n");
  EXPECT_EQ(AskAll("LIST"), "+OK \r\n.\r\n") << "nothing was counted yet";
  EXPECT_EQ(Ask("STAT"), "+OK 5 28");
  EXPECT_EQ(AskAll("LIST"), "+OK \r\n1 1\r\n2 10\r\n3 11\r\n4 2\r\n5 4\r\n.\r\n");
}

TEST_F(Pop3, ListShowsTheOldCountWithTheSizesOfNow) {
  for (int i = 1; i <= 3; ++i) Put(Message("bob", i), std::string(10, 'x'));
  Ask("USER bob");
  Ask("STAT");
  EXPECT_EQ(AskAll("LIST 2"), "+OK \r\n1 10\r\n2 10\r\n3 10\r\n.\r\n");
  Ask("DELE 1");
  Put(Message("bob", 2), "xx");
  // The third entry is the one listed before.
  EXPECT_EQ(AskAll("LIST"), "+OK \r\n1 2\r\n2 10\r\n3 10\r\n.\r\n");
  EXPECT_EQ(Ask("QUIT"), "+OK");
  EXPECT_EQ(AskAll("LIST"), "+OK \r\n.\r\n");
}

TEST_F(Pop3, SendsTheFileAZeroByteAndTwoEnds) {
  const std::string text = std::string("Subject: x\r\n\r\n\0\xFF\r\n.\r\n", 21);
  Put(Message("bob", 1), text);
  Put(Message("bob", 2), "");
  Ask("USER bob");
  const std::string end = ".\r\n.\r\n";
  EXPECT_EQ(AskAll("RETR 1"), "+OK 0\r\n" + text + '\0' + end) << "nothing was listed yet";
  AskAll("LIST");
  EXPECT_EQ(AskAll("RETR 1"), "+OK 21\r\n" + text + '\0' + end);
  EXPECT_EQ(AskAll("RETR 2"), "+OK 0\r\n" + std::string(1, '\0') + end) << "an empty file";
  EXPECT_EQ(AskAll("RETR 3"), "+OK 0\r\n" + end) << "no file";
  EXPECT_EQ(AskAll("RETR"), "+OK 0\r\n" + end);
  Ask("USER alice");
  EXPECT_EQ(AskAll("RETR 1"), "+OK 21\r\n" + end) << "the size is that of another one's message";
}

TEST_F(Pop3, RetrievesAndDeletesByTheNumberInTheName) {
  Put(Message("bob", 10), "ten");
  Put(Message("bob", 12), "twelve");
  Ask("USER bob");
  EXPECT_THAT(AskAll("RETR 1"), HasSubstr("ten")) << "the first name that begins so";
  EXPECT_EQ(Ask("DELE 1"), "+OK");
  EXPECT_TRUE(Home().Has(Message("bob", 10)));
  EXPECT_EQ(Ask("DELE 10"), "+OK");
  EXPECT_FALSE(Home().Has(Message("bob", 10)));
  EXPECT_THAT(AskAll("RETR 1"), HasSubstr("twelve"));
  Put(Box("bob") + "Message_.eml", "");
  Put(Message("bob", 0), "");
  for (const char* command : {"DELE", "DELE ", "DELE 7", "DELE 51"}) EXPECT_EQ(Ask(command), "+OK");
  EXPECT_TRUE(Home().Has(Box("bob") + "Message_.eml"));
  EXPECT_TRUE(Home().Has(Message("bob", 0)));
}

TEST_F(Pop3, AnswersFaultsWithAnErrorAndStaysUsable) {
  Put(Message("bob", 1), "x");
  Ask("USER bob");
  for (const char* command : {"RETR 51", "DELE -1", "RETR -1", "RETR one", "DELE 1x", "RETR 99999",
                              "DELE x", "RETR 1 1"}) {
    EXPECT_EQ(Ask(command), "-ERR") << command;
    EXPECT_THAT(ErrorLog(), HasSubstr(std::string(command).substr(5)));
  }
  EXPECT_EQ(Ask("RETR 50"), "+OK 0");
  EXPECT_TRUE(Home().Has(Message("bob", 1)));
}

TEST_F(Pop3, CountsMoreMessagesThanItCanList) {
  for (int i = 1; i <= 51; ++i) Put(Message("bob", i), "x");
  Ask("USER bob");
  EXPECT_EQ(Ask("STAT"), "+OK 51 51");
  EXPECT_EQ(AskAll("LIST"), "-ERR\r\n");
  Ask("DELE 50");
  EXPECT_EQ(AskAll("LIST"), "-ERR\r\n") << "51 are still counted";
  EXPECT_EQ(Ask("STAT"), "+OK 50 50");
  EXPECT_THAT(AskAll("LIST"), HasSubstr("\r\n50 1\r\n.\r\n"));
}

#ifndef _WIN32
TEST_F(Pop3, AMessageThatCannotBeOpenedIsAFaultOrCode550) {
  std::filesystem::create_symlink("nowhere", Home().Path(Message("bob", 1)));
  Ask("USER bob");
  EXPECT_EQ(Ask("STAT"), "-ERR");
  EXPECT_EQ(AskAll("LIST"), "-ERR\r\n");
  EXPECT_EQ(AskAll("RETR 1"), "+OK 0\r\n550\r\n");
}
#endif

TEST_F(Pop3, SharesTheUserWithEveryOtherConnection) {
  Put(Message("alice", 1), "alice's");
  Put(Message("bob", 1), "bob's\r\n");
  Ask("USER alice");
  MailClient other(pop3Port_);
  other.Ask("USER bob");
  EXPECT_THAT(AskAll("RETR 1"), HasSubstr("bob's"));
  MailClient smtp(smtpPort_);
  smtp.Ask("RCPT TO:<alice@x>");
  EXPECT_EQ(Ask("STAT"), "+OK 1 7");
  other.Ask("REST");
  EXPECT_EQ(Ask("STAT"), "+OK 0 0");
}

TEST_F(Pop3, SendsALongMessageWholeToASlowReaderWhileOthersAreServed) {
  std::string text;
  while (text.size() < 8U << 20) text += "line " + std::to_string(text.size()) + "\r\n";
  Put(Message("bob", 1), text);
  Ask("USER bob");
  client_->Send("RETR 1\r\n");
  MailClient other(pop3Port_);
  EXPECT_EQ(other.Ask("USER alice"), "+OK") << "the message under way stays the one it was";
  client_->Send("NOOP\r\n");
  EXPECT_TRUE(client_->Receive(7) == "+OK 0\r\n");
  EXPECT_TRUE(client_->Receive(text.size()) == text);
  EXPECT_EQ(client_->Receive(7), std::string("\0.\r\n.\r\n", 7));
  EXPECT_EQ(client_->ReceiveLine(), "+OK\r\n");
}

TEST_F(Pop3, EveryQuitWritesALineAndKeepsTheConnection) {
  Ask("USER bob");
  EXPECT_EQ(Ask("QUIT"), "+OK");
  EXPECT_EQ(Ask("NOOP"), "+OK");
  EXPECT_THAT(Read("Mail.log"),
              MatchesRegex("时间：....-..-.. ..:..:..  客户机IP：127\\.0\\.0\\.1  "
                           "发送邮件.POP.  Success!\r\n"));
}

}  // namespace
