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

TEST_F(WebServer, EntersItsDomainInTheHostsFileOnlyOnceItListens) {
  std::filesystem::remove(Home().Path("hosts"));
  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=-1\nDNS=localhost\n");
  OnLoop([this] { TheServer().Stop(); });
  EXPECT_FALSE(StartServer());
  EXPECT_FALSE(Home().Has("hosts"));
  EXPECT_THAT(ErrorLog(), HasSubstr("捕获错误: "));
}

}  // namespace
