#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "tests/mail/mail_fixture.h"

namespace {

using ModMail::ReceivedMessage;
using test::MailClient;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kMarker = "\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@\r\n";
const std::string kAttachment =
    "A: boundary=b\r\n\r\n--b\r\n\r\nYQ==\r\n--b\r\nA: filename=large\r\n";

class Unpacking : public test::MailFixture {
 protected:
  // Reads the attachment where it was unpacked; its copy must be the same.
  std::string Large() const {
    const std::string unpacked = Read(folder_ + "large");
    EXPECT_TRUE(Read("mailroot/Accessary/large") == unpacked);
    return unpacked;
  }
  // Has the first message of each user unpacked, by a client that is gone at once.
  void Quit(const std::vector<std::string>& users) {
    MailClient client(smtpPort_);
    for (const std::string& user : users) client.Ask("RCPT TO:<" + user + "@x>");
    EXPECT_EQ(client.Ask("QUIT"), "221");
    client.Reset();
  }
  // Does `begin`, and stops the server when `reached`, asked at every turn of the loop.
  void StopWhen(const std::function<bool()>& reached, const std::function<void()>& begin) {
    bool isGivenUp = false;
    std::function<void()> look = [&] {
      if (reached()) {
        TheServer().Stop();
      } else if (!isGivenUp) {
        Environment().loop.Post(look);
      }
    };
    OnLoop(look);
    begin();
    EXPECT_TRUE(Eventually([&] { return !TheServer().IsRunning(); }));
    OnLoop([&] { isGivenUp = true; });
    OnLoop([] {});  // behind the last look
    EXPECT_TRUE(TheServer().HasUnpackedAll());
    EXPECT_FALSE(Home().Has(folder_ + "unpack.tmp"));
    EXPECT_FALSE(Home().Has("mailroot/Accessary/unpack.tmp"));
  }

  const std::string folder_ = Box("bob") + "Message_1/";
};

// Clients can name messages faster than they are unpacked.
TEST_F(Unpacking, LetsOneMessageWaitAsOftenAsOneQuitCanNameItAndBoundsThemAll) {
  const std::string root = Home().Text("mailroot");
  const auto linesAfter = [&](const std::vector<ReceivedMessage>& messages) {
    OnLoop([&] {
      ModMail::UnpackQueue queue(Environment());
      queue.Start();
      queue.Add(messages);
      queue.Stop();
    });
    const std::string list = Read("unpack.lst");
    return std::count(list.begin(), list.end(), '\n');
  };
  EXPECT_EQ(linesAfter(std::vector<ReceivedMessage>(33, {1, "bob", root})), 11);
  std::vector<ReceivedMessage> many;
  for (int number = 2; number <= 3000; ++number) many.push_back({number, "bob", root});
  EXPECT_EQ(linesAfter(many), 2048) << "the repeated ones have made room";
  EXPECT_THAT(Read("unpack.lst"), HasSubstr("\r\n2048\tbob\t"));
  EXPECT_THAT(ErrorLog(), Not(HasSubstr("Message_2048.eml")));
  EXPECT_THAT(ErrorLog(), HasSubstr("Message_2049.eml"));
}

TEST_F(Unpacking, LeavesOthersServedAndSurvivesTheClient) {
  std::string text = kAttachment + "Content-Transfer-Encoding: base64\r\n\r\n";
  std::string expected;
  while (text.size() < 24U << 20) {
    text += "VGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFybndlcmsg\r\n";
    expected += "Tarnwerk Tarnwerk Tarnwerk Tarnwerk ";
  }
  Put(Message("bob", 1), text + "--b--\r\n.\r\n");
  MailClient other(pop3Port_);
  Quit({"bob"});
  int served = 0;
  for (bool isIdle = false; !isIdle; ++served) {
    ASSERT_EQ(other.Ask("NOOP"), "+OK");
    OnLoop([&] { isIdle = TheServer().HasUnpackedAll(); });
  }
  EXPECT_GT(served, 10) << "there was time for others in between";
  EXPECT_TRUE(Large() == expected);
}

// Stopped in the middle of a large attachment and again in the middle of the trace, with two more
// messages waiting: no file is half written, and in the end all is as if there had been no stop.
TEST_F(Unpacking, GoesOnAfterAStopWithWhatWasInterruptedAndWhatWaits) {
  const std::string trace = "mailroot/User/email.msg";
  const std::string plain(8U << 20, 'x');
  const std::string text = kAttachment + "\r\n" + plain + "\r\n--b--\r\n";
  const std::string small = "A: b\r\n\r\nYWxpY2U=\r\n";
  Put(Message("bob", 1), text);
  Put(Message("alice", 1), small);
  Put(folder_ + "large", "former");
  StopWhen(
      [&] { return Home().Has(folder_ + "unpack.tmp") && Home().Has(folder_ + "Content.txt"); },
      [&] {
        Quit({"bob", "bob", "alice"});
      });
  EXPECT_TRUE(Read(folder_ + "large") == "former");
  EXPECT_EQ(Read(folder_ + "Content.txt"), "a");
  StopWhen([&] { return Home().Has(trace) && std::filesystem::file_size(Home().Path(trace)) > 0; },
           [&] { ASSERT_TRUE(StartServer()); });
  EXPECT_TRUE(Read(trace).empty());
  EXPECT_TRUE(Read(folder_ + "large") == plain);
  EXPECT_TRUE(Home().Has("unpack.lst"));
  ASSERT_TRUE(StartServer());
  EXPECT_FALSE(Home().Has("unpack.lst"));
  ASSERT_TRUE(IsUnpacked());
  EXPECT_TRUE(Large() == plain);
  EXPECT_EQ(Read(Box("alice") + "Message_1/Content.txt"), "alice");
  const std::string once = text + kMarker;
  const std::string other = small + kMarker;
  EXPECT_TRUE(Read(trace) == once + once + once + once + other + other);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(Unpacking, TakesFromTheListWhatAQuitCanHaveNamed) {
  for (const char* folder : {"mailroot/User/bob", "outside"}) {
    Put(std::string(folder) + "/Message_1.eml", "A: b\r\n\r\nYQ==\r\n");
  }
  const std::string root = "\t" + Home().Text("mailroot") + "\r\n";
  const struct {
    std::string list;
    const char* content;
    const char* fault;
  } cases[] = {
      {"1\tbob" + root, "a", ""},
      {"1\t../../outside" + root + "x\n\n1\tbob\n0\tbob" + root + "32769\tbob" + root + "1x\tbob" +
           root + std::string(200000, '\t') + "\n1\tbob" + root,
       "a", "8 lines name no message"},
      {"1\tbob" + root + std::string(5U << 20, '1'), "", "unpack.lst: "},
  };
  for (const auto& one : cases) {
    std::filesystem::remove_all(Home().Path(folder_));
    std::filesystem::remove(Home().Path("RunErr.Log"));
    Put("unpack.lst", one.list);
    ASSERT_TRUE(StartServer());
    ASSERT_TRUE(IsUnpacked());
    EXPECT_EQ(Read(folder_ + "Content.txt"), one.content) << one.fault;
    const std::string log = ErrorLog();
    EXPECT_THAT(log, HasSubstr(one.fault));
    EXPECT_LE(std::count(log.begin(), log.end(), '\n'), 1);
    EXPECT_FALSE(Home().Has("unpack.lst"));
  }
  EXPECT_FALSE(Home().Has("outside/Message_1"));
}

}  // namespace
