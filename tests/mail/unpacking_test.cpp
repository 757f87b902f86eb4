#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "tests/mail/mail_fixture.h"

namespace {

using test::MailClient;

constexpr const char* kMarker = "\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@\r\n";
const std::string kBegin =
    "A: boundary=b\r\n\r\n--b\r\n\r\nYQ==\r\n--b\r\nA: filename=large\r\n\r\n";
constexpr const char* kEnd = "\r\n--b--\r\n";

class Unpacking : public test::MailFixture {
 protected:
  // Waits until everything is unpacked.
  bool IsUnpacked() {
    return Eventually([&] { return TheServer().HasUnpackedAll(); });
  }
  // Has the first message of each user unpacked, by a client that is gone at once.
  void Quit(const std::vector<std::string>& users) {
    MailClient client(smtpPort_);
    for (const std::string& user : users) client.Ask("RCPT TO:<" + user + "@x>");
    EXPECT_EQ(client.Ask("QUIT"), "221");
    client.Reset();
  }
  // Stops the server as soon as `reached`, asked at every turn of the loop.
  void StopWhen(const std::function<bool()>& reached) {
    OnLoop([&] { LookWhether(reached); });
  }
  void ExpectStopped() {
    EXPECT_TRUE(Eventually([&] { return !TheServer().IsRunning(); }));
    EXPECT_FALSE(Home().Has(folder_ + "unpack.tmp"));
    EXPECT_FALSE(Home().Has("mailroot/Accessary/unpack.tmp"));
  }

  const std::string folder_ = Box("bob") + "Message_1/";
  const std::string message_ = Box("bob") + "Message_1.eml";

 private:
  void LookWhether(const std::function<bool()>& reached) {
    if (reached()) {
      TheServer().Stop();
    } else if (!HasFailure()) {
      Environment().loop.Post([this, reached] { LookWhether(reached); });
    }
  }
};

// Clients can name messages faster than they are unpacked. Repeated ones make room.
TEST_F(Unpacking, BoundsWhatWaits) {
  const std::string root = Home().Text("mailroot");
  std::vector<ModMail::ReceivedMessage> messages(33, {1, "bob", root});
  for (int number = 2; number <= 3000; ++number) messages.push_back({number, "bob", root});
  OnLoop([&] {
    ModMail::UnpackQueue queue(Environment());
    queue.Add(messages);
    queue.Stop();
  });
  const std::string list = Home().Read("unpack.lst");
  EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 2048);
  EXPECT_THAT(list, testing::HasSubstr("\r\n2048\tbob\t"));
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("Message_2049.eml"));
}

TEST_F(Unpacking, LeavesOthersServedAndSurvivesTheClient) {
  Home().Write(message_, kBegin + std::string(24U << 20, 'x') + kEnd);
  MailClient other(pop3Port_);
  Quit({"bob"});
  int served = 0;
  for (bool isIdle = false; !isIdle; ++served) {
    ASSERT_EQ(other.Ask("NOOP"), "+OK");
    OnLoop([&] { isIdle = TheServer().HasUnpackedAll(); });
  }
  EXPECT_GT(served, 10) << "there was time for others in between";
  EXPECT_EQ(Home().Read(folder_ + "large").size(), 24U << 20);
}

// Stopped in the middle of a large attachment and again in the middle of the trace, with two more
// messages waiting: no file is half written, and in the end all is as if there had been no stop.
TEST_F(Unpacking, GoesOnAfterAStopWithWhatWasInterruptedAndWhatWaits) {
  const auto trace = [&] { return Home().Read("mailroot/User/email.msg"); };
  const std::string plain(8U << 20, 'x');
  const std::string text = kBegin + plain + kEnd;
  const std::string small = "A: b\r\n\r\nYWxpY2U=\r\n";
  Home().Write(message_, text);
  Home().Write(Box("alice") + "Message_1.eml", small);
  Home().Write(folder_ + "large", "former");
  StopWhen(
      [&] { return Home().Has(folder_ + "unpack.tmp") && Home().Has(folder_ + "Content.txt"); });
  Quit({"bob", "bob", "alice"});
  ExpectStopped();
  EXPECT_EQ(Home().Read(folder_ + "large"), "former");
  StopWhen([&] { return !trace().empty(); });
  ASSERT_TRUE(StartServer());
  ExpectStopped();
  EXPECT_EQ(trace(), "");
  EXPECT_TRUE(Home().Read(folder_ + "large") == plain);
  ASSERT_TRUE(StartServer());
  ASSERT_TRUE(IsUnpacked());
  EXPECT_EQ(Home().Read(Box("alice") + "Message_1/Content.txt"), "alice");
  std::string expected;
  for (const auto& each : {text, text, text, text, small, small}) expected += each + kMarker;
  EXPECT_TRUE(trace() == expected);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(Unpacking, TakesFromTheListWhatAQuitCanHaveNamed) {
  for (const std::string& message : {message_, std::string("outside/Message_1.eml")}) {
    Home().Write(message, "A: b\r\n\r\nYQ==\r\n");
  }
  const std::string root = "\t" + Home().Text("mailroot") + "\r\n";
  const std::string good = "1\tbob" + root;
  const std::string bad = "1\t../../outside" + root + "x\n\n1\tbob\n0\tbob" + root + "32769\tbob" +
                          root + "1x\tbob" + root + std::string(200000, '\t') + "\n";
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {bad + good, "a", "8 lines name no message"},
      {good + std::string(5U << 20, '1'), "", "unpack.lst: "},
  };
  for (const auto& [list, content, fault] : cases) {
    std::filesystem::remove_all(Home().Path(folder_));
    Home().Write("RunErr.Log", "");
    Home().Write("unpack.lst", list);
    ASSERT_TRUE(StartServer());
    ASSERT_TRUE(IsUnpacked());
    EXPECT_EQ(Home().Read(folder_ + "Content.txt"), content) << fault;
    EXPECT_THAT(ErrorLog(), testing::ContainsRegex(fault));
    EXPECT_FALSE(Home().Has("unpack.lst"));
  }
  EXPECT_FALSE(Home().Has("outside/Message_1"));
}

}  // namespace
