// What no client may achieve: harm to another one or to the process.

#include <filesystem>
#include <optional>
#include <string>

#include "mail/mail_accounts.h"
#include "mail/password_queue.h"
#include "tests/mail/mail_fixture.h"
#include "text/printable_text.h"

namespace {

using test::MailClient;
using MailServer = test::MailFixture;

TEST_F(MailServer, LogsTheAddressOfAClientThatHasGone) {
  test::Client leaving(smtpPort_);  // its greeting is never read, so it ends with a reset
  leaving.Send("QUIT\r\n");
  leaving.Close();
  EXPECT_TRUE(Eventually(
      [&] { return Home().Read("Mail.log").find("客户机IP：127.0.0.1  ") != std::string::npos; }));
}

// Each command is answered with a listing of nearly a megabyte, of which nobody reads a byte.
TEST_F(MailServer, MakesNoMoreRepliesThanAClientReads) {
  for (int i = 0; i < 4000; ++i) {
    Home().Write(Box("bob") + std::string(200, 'x') + std::to_string(i) + ".eml", "");
  }
  MailClient client(pop3Port_);
  client.Ask("USER bob");
  net::Traffic traffic;
  for (int i = 0; i < 80; ++i) {
    const std::uint64_t before = traffic.received;
    client.Send("UIDL\r\n");
    // Each is an arrival of its own for as long as the server reads at all.
    for (int turn = 0; turn < 100 && traffic.received == before; ++turn) {
      OnLoop([&] { traffic = TheServer().TotalTraffic(); });
    }
  }
  EXPECT_LT(traffic.sent, 15U << 20) << "what the system buffers, and one reply";
  // A client that has caught up is served again.
  client.Receive(traffic.sent);
  EXPECT_TRUE(Eventually([&] { return TheServer().TotalTraffic().received > traffic.received; }));
}

// Both in the middle of a flush.
TEST_F(MailServer, GoesOnWhenTheSenderOfALargeMessageLeavesAndWhenItIsStopped) {
  for (const auto& end : std::vector<std::function<void(MailClient&)>>{
           [](MailClient& sender) { sender.Reset(); },
           [this](MailClient&) {
             OnLoop([&] {
               EXPECT_TRUE(TheServer().Stop() && TheServer().Start());
               smtpPort_ = TheServer().SmtpPort();
             });
           }}) {
    MailClient sender(smtpPort_);
    for (const char* command : {"RCPT TO:<alice@", "RCPT TO:<bob@", "DATA"}) sender.Ask(command);
    sender.Send(std::string(20U << 20, 'x'));
    end(sender);
    MailClient other(smtpPort_);
    other.Ask("DATA");
    EXPECT_EQ(other.Ask("text\r\n."), "250 OK,message saved");
  }
}

TEST_F(MailServer, ShowsCommandsOnOneShortLineWithoutPasswords) {
  MailClient client(pop3Port_);
  for (const std::string& tail : {std::string("\x1B[2J\u2028x"), std::string(117, 'x') + "你好"}) {
    for (const char* word : {"PASS", "AUTH", "NOOP"}) {
      client.Ask(word + (" " + tail));
      std::string shown;
      OnLoop([&] { shown = TheServer().Connections().at(0).activity.what; });
      EXPECT_TRUE(shown == word || shown.starts_with("NOOP ")) << shown;
      EXPECT_LE(shown.size(), 120U);
      EXPECT_EQ(shown, text::Printable(shown));
    }
  }
}

TEST_F(MailServer, TellsWhichMessagesCameAndWhichWereCollected) {
  test::ActivityLog log;
  OnLoop([&] { TheServer().Observe(&log); });
  const std::string message =
      "From: a@b.c\r\nSubject: =?utf-8?Q?=E4=BD=A0?=\r\n =?UTF-8?B?5aW9?= x\r\n\r\ntext\r\n.\r\n";
  const auto begin = [&](MailClient& client, std::vector<const char*> recipients) {
    for (const char* recipient : recipients) client.Ask(std::string("RCPT TO:<") + recipient);
    client.Ask("DATA");
    client.Send(message.substr(0, 40));
    EXPECT_TRUE(Eventually(
        [&] { return TheServer().Connections().back().activity.traffic.received == 40; }));
  };
  MailClient sender(smtpPort_);
  begin(sender, {"alice@", "bob@"});
  sender.Send(message.substr(40));
  sender.ReceiveLine();
  EXPECT_EQ(log.last.activity.traffic.received, message.size());
  sender.Ask("QUIT");
  MailClient leaving(smtpPort_);
  begin(leaving, {"bob@"});
  leaving.Close();
  EXPECT_TRUE(Eventually([&] { return log.lines.size() == 2; }));
  MailClient reader(pop3Port_);
  for (const char* command : {"USER alice", "RETR 9", "RETR 1"}) reader.Ask(command);
  EXPECT_TRUE(Eventually([&] { return log.last.activity.detail == "你好 x"; }));
  EXPECT_TRUE(log.last.activity.path.ends_with("Message_1.eml")) << log.last.activity.path;
  EXPECT_THAT(log.lines,
              testing::ElementsAre("来信 → alice、bob（主题：你好 x） 完成", "来信 → bob 对方中断",
                                   "收信 alice 没有找到", "收信 alice 完成"));
  OnLoop([&] { TheServer().Observe(nullptr); });
}

TEST_F(MailServer, TellsWhoSignedInAndCollectsTheMailOfThatUser) {
  test::ActivityLog log;
  std::optional<ModMail::PasswordQueue> passwords;
  ModMail::SaveMailUser(Home().Text("mailroot"), {"bob", "right"});
  Home().Write(Box("bob") + "Message_1.eml", "text");
  Home().Write("Server.ini", Home().Read("Server.ini") + "[Protection]\nSignIn=1\n");
  OnLoop([&] {
    core::Protection& protection = Environment().protection;
    protection.Load();
    protection.SetAccounts(
        passwords.emplace(Environment(), [&] { return Home().Text("mailroot"); }));
    TheServer().Observe(&log);
  });
  MailClient client(pop3Port_);
  const std::string name = "\u202E" + std::string(200, 'x');
  for (const std::string& command : {std::string("PASS right"), "USER " + name,
                                     std::string("PASS right"), std::string("USER bob")}) {
    client.Ask(command);
  }
  EXPECT_EQ(client.Ask("PASS right"), "+OK");
  client.Ask("RETR 1");
  EXPECT_TRUE(Eventually([&] { return log.lines.size() == 3; }));
  EXPECT_THAT(log.lines, testing::ElementsAre("登录 " + text::Printable(name, 80) + " 没有许可",
                                              "登录 bob 完成", "收信 bob 完成"));
  StopServer();
  OnLoop([&] { passwords.reset(); });
}

#ifndef _WIN32
TEST_F(MailServer, AnswersWhereAMessageCannotBeOpened) {
  std::filesystem::create_symlink("nowhere", Home().Path(Box("bob")) / "Message_1.eml");
  MailClient client(pop3Port_);
  client.Ask("USER bob");
  EXPECT_EQ(client.Ask("STAT"), "-ERR");
  EXPECT_EQ(client.Ask("RETR 1"), "+OK 0");
  EXPECT_EQ(client.ReceiveLine(), "550\r\n");
}
#endif

// A port that is no number leaves the former one.
TEST_F(MailServer, StartsWithBothPortsOrNeither) {
  const std::pair<const char*, bool> cases[] = {{"SMTP Port=-1\nPOP3 Port=0\n", false},
                                                {"SMTP Port=0\nPOP3 Port=-1\n", false},
                                                {"SMTP Port=x\nPOP3 Port=0\n", true}};
  for (const auto& [ports, starts] : cases) {
    OnLoop([&] { TheServer().Stop(); });
    Home().Write("Server.ini", std::string("[MailServer Options]\n") + ports);
    EXPECT_EQ(StartServer(), starts) << ports;
    OnLoop([&] { EXPECT_EQ(TheServer().SmtpPort() + TheServer().Pop3Port() > 0, starts); });
  }
}

}  // namespace
