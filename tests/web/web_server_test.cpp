#include <chrono>
#include <filesystem>

#include "tests/web/web_fixture.h"

namespace {

using testing::HasSubstr;

constexpr std::size_t kPiece = 10240;

class WebServer : public test::WebFixture {
 protected:
  void SetUp() override {
    WebFixture::SetUp();
    Home().Write("wwwroot/large.bin", std::string(kPiece * 8 + 1, 'l'));
  }
  // The first piece of the large file has arrived.
  std::unique_ptr<test::Client> InTheMiddle() {
    auto client = std::make_unique<test::Client>(port_);
    client->Send("GET /large.bin HTTP/1.0\r\n\r\n");
    client->Receive(kPiece);
    return client;
  }
};

TEST_F(WebServer, PacesFullPiecesAndServesOthersMeanwhile) {
  const auto start = std::chrono::steady_clock::now();
  const auto slow = InTheMiddle();
  slow->ShutSending();
  EXPECT_EQ(Get("/small.txt"), "small");
  EXPECT_EQ(slow->ReceiveAll().size(), kPiece * 7 + 1);
  // A pause never ends early, however slow the machine.
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(8 * 50));
}

TEST_F(WebServer, KeepsNoMoreThanAPieceOfEachDownloadThatNobodyReads) {
  constexpr std::size_t kDownloads = 60;
  constexpr std::size_t kRead = kPiece * 20;
  Home().Write("wwwroot/long.bin", std::string(kRead * 20, 'l'));
  const std::string request = "GET /long.bin HTTP/1.0\r\n\r\n";
  test::Client idle(port_);
  for (std::size_t i = 1; i <= kDownloads; ++i) {
    idle.Send(request);
    const std::size_t sent = i * request.size();
    ASSERT_TRUE(Eventually([&] { return TheServer().TotalTraffic().received == sent; }));
  }
  test::Client reader(port_);
  reader.Send(request);
  EXPECT_EQ(reader.Receive(kRead).size(), kRead);
  // The earlier ones would have come at least as far, were they not waiting for their own reader.
  OnLoop([&] { EXPECT_LT(TheServer().TotalTraffic().sent, kDownloads * kRead); });
}

TEST_F(WebServer, ServesASecondRequestInBetweenWhichClosesTheConnection) {
  const auto client = InTheMiddle();
  client->Send("GET /small.txt HTTP/1.0\r\n\r\n");
  const std::string rest = client->ReceiveAll();
  EXPECT_TRUE(rest.ends_with("small"));
  EXPECT_LT(rest.size(), kPiece * 5);
}

TEST_F(WebServer, SurvivesAFileThatShrinksWhileItIsSent) {
  const auto client = InTheMiddle();
  std::filesystem::resize_file(Home().Path("wwwroot/large.bin"), 10);
  EXPECT_LT(client->ReceiveAll().size(), kPiece * 5);
  EXPECT_THAT(ErrorLog(), HasSubstr("捕获错误"));
}

TEST_F(WebServer, TellsWhatBecameOfEveryRequest) {
  test::ActivityLog log;
  OnLoop([&] { TheServer().Observe(&log); });
  Home().Write("wwwroot/index.htm", "page");
  Home().Write("wwwroot/whole.bin", std::string(kPiece, 'w'));
  for (const char* request : {"GET /small.txt", "GET /none.htm", "GET /none.txt", "GET /",
                              "GET /whole.bin", "POST /small.txt", "POST /none.exe"}) {
    test::Client client(port_);
    client.Send(std::string(request) + " HTTP/1.0\r\nContent-Length: 1\r\n\r\nx");
    client.ReceiveAll();
  }
  InTheMiddle()->Reset();
  EXPECT_TRUE(Eventually([&] { return log.lines.size() == 8; }));
  const auto evicted = InTheMiddle();
  std::vector<std::unique_ptr<test::Client>> others(net::ConnectionSlots::kLastSlot);
  for (auto& other : others) other = std::make_unique<test::Client>(port_);
  EXPECT_TRUE(Eventually([&] { return log.lines.size() == 9; }));
  const auto disconnected = InTheMiddle();
  // The last of the others got the slot of the evicted one.
  OnLoop([&] { TheServer().Disconnect("HTTP", log.last.slot + 1); });
  OnLoop([&] { TheServer().Observe(nullptr); });
  Get("/small.txt");
  const auto stopped = InTheMiddle();
  OnLoop([&] {
    TheServer().Observe(&log);
    TheServer().Stop();
    TheServer().Observe(nullptr);
  });
  const std::string large = "下载 large.bin ";
  EXPECT_THAT(log.lines, testing::ElementsAre("下载 small.txt 完成", "下载 none.htm 没有找到",
                                              "下载 none.txt 没有找到", "下载 index.htm 完成",
                                              "下载 whole.bin 完成", "POST /small.txt 没有许可",
                                              "运行 cgi-bin/none.exe 没有找到", large + "对方中断",
                                              large + "被新连接挤出", large + "已被断开",
                                              large + "服务已停止"));
}

TEST_F(WebServer, EntersItsDomainInTheHostsFileOnlyOnceItListens) {
  std::filesystem::remove(Home().Path("hosts"));
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=-1\nDNS=localhost\n");
  OnLoop([this] { TheServer().Stop(); });
  EXPECT_FALSE(StartServer());
  EXPECT_FALSE(Home().Has("hosts"));
  EXPECT_THAT(ErrorLog(), HasSubstr("捕获错误: "));
}

}  // namespace
