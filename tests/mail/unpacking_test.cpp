#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "tests/mail/mail_fixture.h"

namespace {

using test::MailClient;
using testing::HasSubstr;
using testing::Not;

class Unpacking : public test::MailFixture {
 protected:
  std::string Content() const { return Read(Box("bob") + "Message_1/Content.txt"); }
  std::string Unpacked(const std::string& name) const {
    const std::string unpacked = Read(Box("bob") + "Message_1/" + name);
    EXPECT_EQ(Read("mailroot/Accessary/" + name), unpacked);
    return unpacked;
  }
  std::string Trace() const { return Read("mailroot/User/email.msg"); }
};

constexpr const char* kMarker = "\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@\r\n";

// A client can name messages without end, and unpacking takes longer than that.
TEST_F(Unpacking, LetsOneMessageWaitAsOftenAsOneQuitCanNameItAndBoundsThemAll) {
  const std::string root = Home().Text("mailroot");
  const auto waitingAfter = [&](const std::function<void(ModMail::UnpackQueue&)>& add) {
    OnLoop([&] {
      ModMail::UnpackQueue queue(Environment());
      queue.Start();
      add(queue);
      queue.Stop();
    });
    return Read("unpack.lst");
  };
  const auto linesOf = [](const std::string& list) {
    return std::count(list.begin(), list.end(), '\n');
  };
  const std::vector<ModMail::ReceivedMessage> eleven(11, {1, "bob", root});
  EXPECT_EQ(linesOf(waitingAfter([&](auto& queue) {
              for (int i = 0; i < 3; ++i) queue.Add(eleven);
            })),
            11);
  const std::string list = waitingAfter([&](auto& queue) {
    for (int number = 2; number <= 3000; ++number) queue.Add({{number, "bob", root}});
  });
  EXPECT_EQ(linesOf(list), 2048) << "the repeated ones have made room";
  EXPECT_THAT(list, HasSubstr("\r\n2048\tbob\t"));
  EXPECT_THAT(ErrorLog(), Not(HasSubstr("Message_2048.eml")));
  EXPECT_THAT(ErrorLog(), HasSubstr("Message_2049.eml"));
}

TEST_F(Unpacking, LeavesOthersServedAndSurvivesTheClient) {
  std::string text =
      "A: boundary=b\r\n\r\n--b\r\nA: filename=large\r\n"
      "Content-Transfer-Encoding: base64\r\n\r\n";
  std::string expected;
  while (text.size() < 24U << 20) {
    text += "VGFybndlcmsgVGFybndlcmsgVGFybndlcmsgVGFybndlcmsg\r\n";
    expected += "Tarnwerk Tarnwerk Tarnwerk Tarnwerk ";
  }
  // Too long for one arrival, so it is put where it would be, and the recipient named alone.
  Put(Message("bob", 1), text + "--b--\r\n.\r\n");
  MailClient client(smtpPort_);
  MailClient other(pop3Port_);
  client.Ask("RCPT TO:<bob@x>");
  EXPECT_EQ(client.Ask("QUIT"), "221");
  client.Reset();
  int served = 0;
  for (bool isIdle = false; !isIdle; ++served) {
    ASSERT_EQ(other.Ask("NOOP"), "+OK");
    OnLoop([&] { isIdle = TheServer().HasUnpackedAll(); });
  }
  EXPECT_GT(served, 10) << "there was time for others in between";
  EXPECT_TRUE(Unpacked("large") == expected);
}

// Stopped in the middle of a large attachment, with two more messages behind it: what is there is
// whole, and the next start leaves everything as if there had been no stop.
TEST_F(Unpacking, GoesOnAfterAStopWithWhatWasInterruptedAndWhatWaits) {
  const std::string folder = Box("bob") + "Message_1/";
  const std::string trace = "mailroot/User/email.msg";
  std::string text = "A: boundary=b\r\n\r\n--b\r\n\r\nYQ==\r\n--b\r\nA: filename=large\r\n\r\n";
  const std::string plain(8U << 20, 'x');
  text += plain + "\r\n--b--\r\n";
  Put(Message("bob", 1), text);
  Put(folder + "large", "former");
  {
    MailClient client(smtpPort_);
    client.Ask("RCPT TO:<bob@x>");
    client.Ask("RCPT TO:<bob@x>");
    client.Ask("RCPT TO:<alice@x>");
    Put(Message("alice", 1), "A: b\r\n\r\nYWxpY2U=\r\n");
    EXPECT_EQ(client.Ask("QUIT"), "221");
  }
  // Looks at every turn of the loop.
  const auto stopWhen = [&](const std::function<bool()>& reached) {
    bool isGivenUp = false;
    std::function<void()> look = [&] {
      if (reached()) {
        TheServer().Stop();
      } else if (!isGivenUp) {
        Environment().loop.Post(look);
      }
    };
    OnLoop(look);
    EXPECT_TRUE(Eventually([&] { return !TheServer().IsRunning(); }));
    OnLoop([&] { isGivenUp = true; });
    OnLoop([] {});  // behind the last look
    EXPECT_TRUE(TheServer().HasUnpackedAll());
    EXPECT_FALSE(Home().Has(folder + "unpack.tmp"));
    EXPECT_FALSE(Home().Has("mailroot/Accessary/unpack.tmp"));
  };
  stopWhen([&] { return Home().Has(folder + "unpack.tmp") && Home().Has(folder + "Content.txt"); });
  EXPECT_TRUE(Read(folder + "large") == "former");
  EXPECT_EQ(Content(), "a");
  ASSERT_TRUE(StartServer());
  // This time in the middle of the trace.
  stopWhen([&] { return Home().Has(trace) && std::filesystem::file_size(Home().Path(trace)) > 0; });
  EXPECT_TRUE(Trace().empty());
  EXPECT_TRUE(Read(folder + "large") == plain);
  EXPECT_TRUE(Home().Has("unpack.lst"));
  ASSERT_TRUE(StartServer());
  EXPECT_FALSE(Home().Has("unpack.lst"));
  ASSERT_TRUE(IsUnpacked());
  EXPECT_TRUE(Unpacked("large") == plain);
  EXPECT_EQ(Read(Box("alice") + "Message_1/Content.txt"), "alice");
  const std::string once = text + kMarker;
  const std::string other = "A: b\r\n\r\nYWxpY2U=\r\n" + std::string(kMarker);
  EXPECT_TRUE(Trace() == once + once + once + once + other + other);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(Unpacking, TakesFromTheListWhatAQuitCanHaveNamed) {
  Put(Message("bob", 1), "A: b\r\n\r\nYQ==\r\n");
  Put("outside/Message_1.eml", "A: b\r\n\r\nYQ==\r\n");
  const std::string root = "\t" + Home().Text("mailroot") + "\r\n";
  const struct {
    std::string list;
    bool isUnpacked;
    const char* fault;
  } cases[] = {
      {"1\tbob" + root, true, ""},
      {"1\t../../outside" + root + "x\n\n1\tbob\n0\tbob" + root + "32769\tbob" + root + "1x\tbob" +
           root + std::string(200000, '\t') + "\n1\tbob" + root,
       true, "8 lines name no message"},
      {"1\tbob" + root + std::string(5U << 20, '1'), false, "unpack.lst: "},
  };
  for (const auto& one : cases) {
    std::filesystem::remove_all(Home().Path(Box("bob") + "Message_1"));
    std::filesystem::remove(Home().Path("RunErr.Log"));
    Put("unpack.lst", one.list);
    ASSERT_TRUE(StartServer());
    ASSERT_TRUE(IsUnpacked());
    EXPECT_EQ(Content(), one.isUnpacked ? "a" : "") << one.fault;
    const std::string log = ErrorLog();
    EXPECT_THAT(log, HasSubstr(one.fault));
    EXPECT_LE(std::count(log.begin(), log.end(), '\n'), 1);
    EXPECT_FALSE(Home().Has("unpack.lst"));
  }
  EXPECT_FALSE(Home().Has("outside/Message_1"));
}

}  // namespace
