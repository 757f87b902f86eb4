// What no client may achieve: harm to another one, to the slots or to the process.

#include <thread>

#include "tests/web/web_fixture.h"

namespace {

using test::Client;

class WebServerUnderAttack : public test::WebFixture {
 protected:
  void SetUp() override {
    StartWeb();
    Page("a.txt", "fine");
  }
  void ExpectHealthy() { EXPECT_EQ(Get("/a.txt"), "fine"); }
};

TEST_F(WebServerUnderAttack, TreatsEveryArrivalAsARequestOfItsOwn) {
  Client client(port_);
  for (const char c : std::string("GET /a.txt HTTP/1.0\r\n\r\n")) {
    client.Send(std::string(1, c));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  EXPECT_EQ(client.ReceiveFor(std::chrono::milliseconds(50)), "");
  ExpectHealthy();
}

TEST_F(WebServerUnderAttack, TakesTenMegabytesAtOnce) {
  Client client(port_);
  client.Send("GET /a.txt HTTP/1.0\r\n\r\n" + std::string(10 << 20, 'x'));
  EXPECT_EQ(client.ReceiveAll(), "fine");
  EXPECT_FALSE(client.WasReset());
  ExpectHealthy();
}

TEST_F(WebServerUnderAttack, SurvivesAFileThatShrinksOrGoesWhileItIsSent) {
  Page("shrinks.bin", std::string(10240 * 6 + 1, 's'));
  Client client(port_);
  client.Send("GET /shrinks.bin HTTP/1.0\r\n\r\n");
  client.Receive(10240);
  std::filesystem::resize_file(Home().Path("wwwroot/shrinks.bin"), 10);
  client.ReceiveAll();
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("捕获错误"));
  ExpectHealthy();
}

}  // namespace
