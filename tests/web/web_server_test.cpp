#include "tests/web/web_fixture.h"

namespace {

using test::Client;
using testing::HasSubstr;

using WebServer = test::WebFixture;

TEST_F(WebServer, PacesFullPiecesAndServesOthersMeanwhile) {
  StartWeb();
  Page("large.bin", std::string(10240 * 8 + 1, 'l'));
  Page("small.txt", "s");
  Client slow(port_);
  const auto start = std::chrono::steady_clock::now();
  slow.Send("GET /large.bin HTTP/1.0\r\n\r\n");
  slow.Receive(10240);
  EXPECT_EQ(Get("/small.txt"), "s");
  EXPECT_EQ(slow.ReceiveAll().size(), 10240U * 7 + 1);
  // A pause never ends early, however slow the machine.
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(8 * 50));
}

TEST_F(WebServer, ServesASecondRequestInBetweenWhichClosesTheConnection) {
  StartWeb();
  Page("large.bin", std::string(10240 * 20, 'l'));
  Page("small.txt", "small");
  Client client(port_);
  client.Send("GET /large.bin HTTP/1.0\r\n\r\n");
  client.Receive(10240);
  client.Send("GET /small.txt HTTP/1.0\r\n\r\n");
  const std::string rest = client.ReceiveAll();
  EXPECT_TRUE(rest.ends_with("small"));
  EXPECT_LT(rest.size(), 10240U * 10);
}

TEST_F(WebServer, EntersItsDomainOnceItListensAndNotBefore) {
  StartWeb();
  EXPECT_EQ(Home().Read("hosts"), "\r\n127.0.0.1    localhost\r\n");
  std::filesystem::remove(Home().Path("hosts"));
  OnLoop([this] {
    // The taken port: the second server's start fails and leaves nothing.
    Home().Write("Server.ini", "[WebServer Options]\nTCPPort=-1\nDNS=localhost\n");
    ModWeb::WebServer other(Environment());
    EXPECT_FALSE(other.Start());
    EXPECT_FALSE(other.IsRunning());
  });
  EXPECT_FALSE(Home().Has("hosts"));
  EXPECT_THAT(ErrorLog(), HasSubstr("捕获错误: "));
}

TEST_F(WebServer, CanBeStoppedInTheMiddleAndStartedAtOnce) {
  StartWeb();
  Page("large.bin", std::string(10240 * 20, 'l'));
  Client client(port_);
  client.Send("GET /large.bin HTTP/1.0\r\n\r\n");
  client.Receive(10240);
  OnLoop([this] {
    EXPECT_TRUE(TheServer().Stop());
    EXPECT_FALSE(TheServer().IsRunning());
    EXPECT_TRUE(TheServer().Start());
    port_ = TheServer().ListeningPort();
  });
  EXPECT_LT(client.ReceiveAll().size(), 10240U * 20);
  Page("small.txt", "s");
  EXPECT_EQ(Get("/small.txt"), "s");
}

}  // namespace
