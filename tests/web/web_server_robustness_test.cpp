// What no client may achieve: harm to another one, to the slots or to the process.

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
