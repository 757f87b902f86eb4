#include <string>

#include "tests/mail/mail_fixture.h"

namespace {

using test::Client;
using test::MailClient;
using testing::HasSubstr;
using testing::MatchesRegex;

class Smtp : public test::MailFixture {
 protected:
  void SetUp() override {
    MailFixture::SetUp();
    client_ = std::make_unique<MailClient>(smtpPort_);
  }
  std::string Ask(const std::string& command) { return client_->Ask(command); }
  void Send(const std::string& bytes) { client_->Send(bytes); }
  std::string Line() { return client_->ReceiveLine(); }

  std::unique_ptr<MailClient> client_;
};

constexpr const char* kSaved = "250 OK,message saved\r\n";

TEST_F(Smtp, AnswersEachCommandWithItsSettledText) {
  EXPECT_EQ(client_->greeting, "220  SMTP server ready \r\n");
  for (const char* word :
       {"EHLO x", "helo x", "NOOP", "RSET", "EXPN", "SEND", "SOML", "SAML", "TURN", "ehloooo"}) {
    EXPECT_EQ(Ask(word), "250 OK") << word;
  }
  EXPECT_EQ(Ask("VRFY bob"), "252");
  EXPECT_EQ(Ask("help"), "214");
  EXPECT_EQ(Ask("DATA"), "354 Enter mail,end with.");
  EXPECT_EQ(Ask("Sender: bob"), "250 OK") << "a header that begins with a command is one";
}

TEST_F(Smtp, TakesTheNameBetweenBracketAndAtSign) {
  const struct {
    const char* command;
    const char* reply;
  } cases[] = {
      {"MAIL FROM:<@x>", "250 OK"},  // nobody named yet: the folder of all accounts
      {"MAIL FROM:<alice@anywhere>", "250 OK"},
      {"MAIL FROM:<carol@x>", "550 Account not exist"},
      {"RCPT TO:<@x>", "550 Account not exist"},  // empty: still carol
      {"RCPT TO:<bob@x>", "250 OK"},
      {"RCPT TO:<@x>", "250 OK"},
      {"RCPT TO:<bob>", "250 OK"},  // no "@" behind: empty
      {"MAIL FROM: x@y <bob>", "250 OK"},
      {"MAIL FROM:bob@x", "550 Account not exist"},  // from the line's first character on
      {"MAIL FROM:<ALICE@x>", "250 OK"},
  };
  for (const auto& one : cases) EXPECT_EQ(Ask(one.command), one.reply) << one.command;
}

TEST_F(Smtp, StoresTheBytesOfEveryChunkAsTheyArrive) {
  const std::string first = "Subject: x\n..dots\r\n" + std::string("\0\xFF\xC4\xE3", 4);
  const std::string last = "\r\nrest\r\n.\r\n";
  Ask("MAIL FROM:<alice@x>");
  Ask("RCPT TO:<bob@x>");
  Ask("RCPT TO:<alice@x>");
  Ask("DATA");
  EXPECT_TRUE(client_->IsSilentAfter(first));
  EXPECT_EQ(Read(Message("bob", 1)), first);
  Send(last);
  EXPECT_EQ(Line(), kSaved);
  EXPECT_EQ(Read(Message("bob", 1)), first + last);
  EXPECT_EQ(Read(Message("alice", 1)), first + last);
}

TEST_F(Smtp, SeesTheEndOfAMessageInOneArrivalOnly) {
  Ask("RCPT TO:<bob@x>");
  Ask("DATA");
  EXPECT_TRUE(client_->IsSilentAfter("text\r\n."));
  EXPECT_TRUE(client_->IsSilentAfter("\r\n")) << "the end that two arrivals share";
  EXPECT_TRUE(client_->IsSilentAfter(".\n"));
  Send("A sentence at the end of a chunk.\r\n  ");
  EXPECT_EQ(Line(), kSaved) << "blanks do not count";
  EXPECT_EQ(Ask("more text"), "") << "a bare line end";
  EXPECT_EQ(Ask("."), "");
  EXPECT_EQ(Read(Message("bob", 1)), "text\r\n.\r\n.\nA sentence at the end of a chunk.\r\n  ");
}

TEST_F(Smtp, AChunkBeforeAnyDataBeginsAMessageToo) {
  Ask("RCPT TO:<bob@x>");
  EXPECT_EQ(Ask("early\r\n."), "250 OK,message saved");
  EXPECT_EQ(Read(Message("bob", 1)), "early\r\n.\r\n");
}

TEST_F(Smtp, ACommandWordInsideAMessageIsThatCommand) {
  Ask("RCPT TO:<bob@x>");
  Ask("DATA");
  EXPECT_TRUE(client_->IsSilentAfter("first\r\n"));
  EXPECT_EQ(Ask("Database"), "354 Enter mail,end with.");
  // The count is taken anew, and finds the first half.
  EXPECT_EQ(Ask("second\r\n."), "250 OK,message saved");
  EXPECT_EQ(Read(Message("bob", 1)), "first\r\n");
  EXPECT_EQ(Read(Message("bob", 2)), "second\r\n.\r\n");
  EXPECT_EQ(Ask("quite"), "221");
}

TEST_F(Smtp, OfAWholeTransactionInOneArrivalOnlyTheFirstWordCounts) {
  Send("MAIL FROM:<alice@x>\r\nRCPT TO:<bob@x>\r\nDATA\r\nx\r\n.\r\n");
  EXPECT_EQ(Line(), "250 OK\r\n");
  EXPECT_TRUE(client_->IsSilentAfter(""));
  EXPECT_FALSE(Home().Has(Message("bob", 1)));
}

TEST_F(Smtp, NumbersAMessageByTheMailboxNamedLast) {
  Put(Message("alice", 1), "old\r\n");
  Put(Message("alice", 2), "older\r\n");
  Ask("RCPT TO:<alice@x>");
  Ask("RCPT TO:<bob@x>");  // counts his, which is empty
  Ask("DATA");
  EXPECT_EQ(Ask("new\r\n."), "250 OK,message saved");
  EXPECT_EQ(Read(Message("bob", 1)), "new\r\n.\r\n");
  EXPECT_EQ(Read(Message("alice", 1)), "old\r\nnew\r\n.\r\n") << "an existing file is extended";
}

TEST_F(Smtp, AfterADeletionTheNextMessageExtendsTheLastOne) {
  Put(Message("bob", 2), "two\r\n");
  Ask("RCPT TO:<bob@x>");
  Ask("DATA");
  Ask("new\r\n.");
  EXPECT_EQ(Read(Message("bob", 2)), "two\r\nnew\r\n.\r\n");
  EXPECT_FALSE(Home().Has(Message("bob", 1)));
}

TEST_F(Smtp, GivesARecipientNamedTwiceEveryChunkTwice) {
  for (int i = 0; i < 2; ++i) Ask("RCPT TO:<bob@x>");
  Ask("DATA");
  Ask("x\r\n.");
  EXPECT_EQ(Read(Message("bob", 1)), "x\r\n.\r\nx\r\n.\r\n");
}

TEST_F(Smtp, StoresNothingFromTheFiftiethMessageOnAndSaysOtherwise) {
  for (int i = 1; i <= 48; ++i) Put(Message("bob", i), "x");
  Deliver(*client_, "bob", "the 49th\r\n.\r\n");
  EXPECT_EQ(Read(Message("bob", 49)), "the 49th\r\n.\r\n");
  Deliver(*client_, "bob", "the 50th\r\n.\r\n");
  EXPECT_FALSE(Home().Has(Message("bob", 50)));
  EXPECT_FALSE(Home().Has(Message("bob", 51)));
}

TEST_F(Smtp, KeepsElevenRecipientsAndDoesNotAnswerTheTwelfth) {
  for (int i = 1; i <= 11; ++i) {
    const std::string name = "user" + std::to_string(i);
    Put(Box(name) + "UserInfo.ini", "");
    EXPECT_EQ(Ask("RCPT TO:<" + name + "@x>"), "250 OK");
  }
  EXPECT_TRUE(client_->IsSilentAfter("RCPT TO:<bob@x>\r\n"));
  EXPECT_THAT(ErrorLog(), HasSubstr("bob"));
  Ask("DATA");
  Ask("x\r\n.");
  EXPECT_EQ(Read(Message("user1", 1)), "x\r\n.\r\n");
  EXPECT_EQ(Read(Message("user11", 1)), "x\r\n.\r\n");
  EXPECT_FALSE(Home().Has(Message("bob", 1)));
}

TEST_F(Smtp, KeepsRecipientsUntilSomebodyQuits) {
  Ask("RCPT TO:<bob@x>");
  EXPECT_EQ(Ask("RSET"), "250 OK");
  client_->Close();
  MailClient next(smtpPort_);
  Deliver(next, "alice", "for both\r\n.\r\n");
  EXPECT_EQ(Read(Message("bob", 1)), "for both\r\n.\r\n");
  EXPECT_EQ(next.Ask("QUIT"), "221");
  Deliver(next, "alice", "for one\r\n.\r\n");
  EXPECT_EQ(Read(Message("bob", 1)), "for both\r\n.\r\n");
  EXPECT_EQ(Read(Message("alice", 2)), "for one\r\n.\r\n");
}

TEST_F(Smtp, AnswersSavedWhenAMailboxCannotBeWrittenAndSkipsTheLaterOnes) {
  Put(Box("carol") + "Message_1.eml/in the way", "");
  for (const char* name : {"alice", "carol", "bob"}) {
    EXPECT_EQ(Ask("RCPT TO:<" + std::string(name) + "@x>"), "250 OK");
  }
  Ask("DATA");
  EXPECT_EQ(Ask("x\r\n."), "250 OK,message saved");
  EXPECT_EQ(Read(Message("alice", 1)), "x\r\n.\r\n");
  EXPECT_FALSE(Home().Has(Message("bob", 1)));
  EXPECT_THAT(ErrorLog(), HasSubstr("carol"));
}

TEST_F(Smtp, AcceptsAMessageForNobody) {
  EXPECT_EQ(Ask("MAIL FROM:<carol@x>"), "550 Account not exist");
  EXPECT_EQ(Ask("DATA"), "354 Enter mail,end with.");
  EXPECT_EQ(Ask("x\r\n."), "250 OK,message saved");
}

TEST_F(Smtp, AnotherConnectionChangesTheNumberInTheMiddleOfAMessage) {
  for (int i = 1; i <= 3; ++i) Put(Message("alice", i), "x");
  Ask("RCPT TO:<bob@x>");
  Ask("DATA");
  EXPECT_TRUE(client_->IsSilentAfter("first\r\n"));
  MailClient pop(pop3Port_);
  pop.Ask("USER alice");
  EXPECT_EQ(pop.Ask("STAT"), "+OK 3 3");
  EXPECT_EQ(Ask("last\r\n."), "250 OK,message saved");
  EXPECT_EQ(Read(Message("bob", 1)), "first\r\n");
  EXPECT_EQ(Read(Message("bob", 4)), "last\r\n.\r\n");
}

TEST_F(Smtp, EveryQuitWritesALineAndKeepsTheConnection) {
  EXPECT_EQ(Ask("QUIT"), "221");
  EXPECT_EQ(Ask("quit"), "221");
  EXPECT_EQ(Ask("NOOP"), "250 OK");
  const std::string line =
      "时间：....-..-.. ..:..:..  客户机IP：127\\.0\\.0\\.1  收到邮件.SMTP.  Success!\r\n";
  const std::string log = Read("Mail.log");
  EXPECT_THAT(log.substr(0, log.size() / 2), MatchesRegex(line));
  EXPECT_THAT(log.substr(log.size() / 2), MatchesRegex(line));
}

TEST_F(Smtp, TheLineOfAQuitHasTheAddressOfAClientThatHasGone) {
  Client leaving(smtpPort_);  // whose greeting nobody reads, so that its end is a reset
  leaving.Send("QUIT\r\n");
  leaving.Close();
  ASSERT_TRUE(Eventually([&] { return Home().Has("Mail.log"); }));
  EXPECT_THAT(Read("Mail.log"), HasSubstr("客户机IP：127.0.0.1  "));
}

}  // namespace
