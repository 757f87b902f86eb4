// What no client may achieve: a file outside its mailbox, harm to another client or to the process.

#include <algorithm>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <memory>
#include <string>
#include <vector>

#include "tests/mail/mail_fixture.h"
#include "text/printable_text.h"

namespace {

using test::MailClient;
namespace fs = std::filesystem;

class MailServerUnderAttack : public test::MailFixture {
 protected:
  void ExpectHealthy() {
    MailClient smtp(smtpPort_);
    EXPECT_EQ(smtp.Ask("NOOP"), "250 OK");
    MailClient pop(pop3Port_);
    EXPECT_EQ(pop.Ask("USER bob"), "+OK");
  }
  // Names of everything under the program's folder.
  std::vector<std::string> Everything() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(Home().Native())) {
      if (entry.path().filename() != "RunErr.Log") names.push_back(entry.path().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(MailServerUnderAttack, ReachesNoFileThroughAName) {
  Put("outside/Message_1.eml", "secret");
  Put("outside/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n");
  Put("mailroot/Message_1.eml", "secret");
  const std::string absolute = Home().Native().string() + "/outside";
  const std::vector<std::string> before = Everything();
  for (const std::string& name :
       {std::string("../../outside"), std::string("..\\..\\outside"), absolute, std::string(".."),
        std::string("."), std::string("alice/../../../outside"), std::string("alice\\"),
        std::string(".. "), std::string(" "), std::string("a:b"), std::string("x\0y", 3),
        std::string(300, 'x'), std::string(20000, '.'), std::string("\xFF\xFE")}) {
    MailClient smtp(smtpPort_);
    EXPECT_EQ(smtp.Ask("MAIL FROM:<" + name + "@x>"), "550 Account not exist") << name;
    EXPECT_EQ(smtp.Ask("RCPT TO:<" + name + "@x>"), "550 Account not exist") << name;
    EXPECT_EQ(smtp.Ask("DATA"), "354 Enter mail,end with.");
    EXPECT_EQ(smtp.Ask("x\r\n."), "250 OK,message saved");
    MailClient pop(pop3Port_);
    EXPECT_EQ(pop.Ask("USER " + name), "-ERR Account not exist") << name;
    EXPECT_EQ(pop.Ask("PASS x"), "-ERR") << name;
    EXPECT_EQ(pop.Ask("STAT"), "+OK 0 0") << name;
    EXPECT_EQ(pop.Ask("DELE 1"), "+OK") << name;
    pop.Send("RETR 1\r\n");
    EXPECT_EQ(pop.Receive(13), "+OK 0\r\n.\r\n.\r\n") << name;
  }
  EXPECT_EQ(Everything(), before);
}

#ifndef _WIN32
TEST_F(MailServerUnderAttack, SendsAnErrorInPlaceOfAMessageThatCannotBeOpened) {
  fs::create_symlink("nowhere", Home().Path(Message("bob", 1)));
  MailClient client(pop3Port_);
  client.Ask("USER bob");
  EXPECT_EQ(client.Ask("STAT"), "-ERR");
  EXPECT_EQ(client.Ask("LIST"), "-ERR");
  EXPECT_EQ(client.Ask("RETR 1"), "+OK 0");
  EXPECT_EQ(client.ReceiveLine(), "550\r\n");
  EXPECT_EQ(client.Ask("NOOP"), "+OK");
}
#endif

TEST_F(MailServerUnderAttack, LogsTheAddressOfAClientThatHasGone) {
  test::Client leaving(smtpPort_);  // whose greeting nobody reads, so that its end is a reset
  leaving.Send("QUIT\r\n");
  leaving.Close();
  ASSERT_TRUE(Eventually([&] { return Home().Has("Mail.log"); }));
  EXPECT_THAT(Read("Mail.log"), testing::HasSubstr("客户机IP：127.0.0.1  "));
}

// A listing of nearly a megabyte for each command, of which nobody reads a byte.
TEST_F(MailServerUnderAttack, MakesNoMoreRepliesThanAClientReads) {
  constexpr int kCommands = 80;
  for (int i = 0; i < 4000; ++i) {
    Put(Box("bob") + std::string(200, 'x') + std::to_string(i) + ".eml", "");
  }
  MailClient client(pop3Port_);
  client.Ask("USER bob");
  net::Traffic traffic;
  for (int i = 0; i < kCommands; ++i) {
    const std::uint64_t before = traffic.received;
    client.Send("UIDL\r\n");
    // Each an arrival of its own for as long as they are read at all.
    for (int turn = 0; turn < 100 && traffic.received == before; ++turn) {
      OnLoop([&] { traffic = TheServer().TotalTraffic(); });
    }
  }
  EXPECT_LT(traffic.sent, 15U << 20) << "what the system buffers, and one reply";
  ExpectHealthy();
}

TEST_F(MailServerUnderAttack, ShowsWhatClientsSendOnOneShortLine) {
  MailClient client(pop3Port_);
  std::string shown;
  for (const std::string& tail :
       {std::string("\x1B[2J\u2028x"), std::string(9000, 'x'), std::string(117, 'x') + "你好"}) {
    client.Ask("NOOP " + tail);
    OnLoop([&] { shown = TheServer().Connections().at(0).activity.what; });
    EXPECT_THAT(shown, testing::StartsWith("NOOP ")) << tail.size();
    EXPECT_LE(shown.size(), 120U);
    EXPECT_EQ(shown, text::Printable(shown));
    client.Ask("AUTH PLAIN " + tail);
    OnLoop([&] { shown = TheServer().Connections().at(0).activity.what; });
    EXPECT_THAT(shown, testing::Not(testing::HasSubstr("PLAIN")));
  }
}

// A port that a settings file can name and nobody else can have.
std::uint16_t TakePort(asio::ip::tcp::acceptor& acceptor) {
  for (std::uint16_t port = 20000; port < 32000; ++port) {
    asio::error_code error;
    acceptor.open(asio::ip::tcp::v4());
    acceptor.bind({asio::ip::address_v4::any(), port}, error);
    if (!error) acceptor.listen(1, error);
    if (!error) return port;
    acceptor.close();
  }
  return 0;
}

TEST_F(MailServerUnderAttack, StartsWithBothPortsOrNeither) {
  asio::io_context context;
  asio::ip::tcp::acceptor acceptor(context);
  const std::string taken = std::to_string(TakePort(acceptor));
  for (const std::string& ports :
       {"SMTP Port=0\nPOP3 Port=" + taken + "\n", "SMTP Port=" + taken + "\nPOP3 Port=0\n"}) {
    Put("Server.ini", "[MailServer Options]\n" + ports);
    OnLoop([&] {
      EXPECT_TRUE(TheServer().Stop());
      EXPECT_FALSE(TheServer().Start());
      EXPECT_FALSE(TheServer().IsRunning());
      EXPECT_EQ(TheServer().SmtpPort(), 0);
      EXPECT_EQ(TheServer().Pop3Port(), 0);
    });
  }
  acceptor.close();
  OnLoop([&] { EXPECT_TRUE(TheServer().Start()); });
}

}  // namespace
