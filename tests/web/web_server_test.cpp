#include <regex>

#include "tests/web/web_fixture.h"
#include "web/not_found_page.h"

namespace {

using test::Client;
using testing::HasSubstr;
using testing::StartsWith;

using WebServer = test::WebFixture;

// GoogleTest's own patterns know no groups on Windows.
bool IsMatch(const std::string& text, const char* pattern) {
  return std::regex_match(text, std::regex(pattern));
}

std::string NotFound() { return ModWeb::BuildNotFoundPage(); }

TEST_F(WebServer, SendsTheBareFileAndCloses) {
  StartWeb();
  Page("docs/a.HTM", "<p>page</p>");
  Page("img/x.gif", std::string("GIF\0\xFF", 5));
  EXPECT_EQ(Get("/docs/a.HTM"), "<p>page</p>");
  EXPECT_EQ(Get("/DOCS/A.htm"), "<p>page</p>");
  EXPECT_EQ(Get("/img/x.gif"), std::string("GIF\0\xFF", 5));
  EXPECT_EQ(WebLog(), "");
}

TEST_F(WebServer, ServesTheFirstDefaultPageThatExists) {
  StartWeb();
  EXPECT_EQ(Get("/"), "");
  Page("default.htm", "second");
  EXPECT_EQ(Get("/"), "second");
  Page("index.htm", "first");
  EXPECT_EQ(Get("/"), "first");
}

TEST_F(WebServer, NeverTriesTheEleventhDefaultPage) {
  std::string names;
  for (int i = 1; i <= 11; ++i) names += "p" + std::to_string(i) + ".htm\r\n";
  Home().Write("IndexFN.Log", names);
  StartWeb();
  Page("p11.htm", "eleven");
  // The tenth name stands, and a page that is missing has its own page.
  EXPECT_EQ(Get("/"), NotFound());
  Page("p10.htm", "ten");
  EXPECT_EQ(Get("/"), "ten");
}

TEST_F(WebServer, AnswersAMissingPageWithThePageAndAMissingFileWithNothing) {
  StartWeb();
  EXPECT_EQ(Get("/missing.htm"), NotFound());
  EXPECT_EQ(Get("/missing.HTML"), NotFound());
  EXPECT_EQ(Get("/missing.gif"), "");
  EXPECT_EQ(Get("/a.htm?x=1"), "");
  EXPECT_EQ(Get("/placeholder%20"), "");
  EXPECT_EQ(WebLog(), "");
  EXPECT_THAT(NotFound(), StartsWith("<html>\r\n\r\n<head>\r\n<style>\r\na:link          {"));
  EXPECT_TRUE(NotFound().ends_with("</body>\r\n</html>\r\n\r\n\r\n"));
  EXPECT_EQ(NotFound().size(), 980U);
}

TEST_F(WebServer, FollowsDotsOutOfItsRoot) {
  StartWeb();
  Home().Write("outside.txt", "out");
  EXPECT_EQ(Get("/../outside.txt"), "out");
}

TEST_F(WebServer, RefusesToReadWithoutTheRightAndLogsTheSlashedResource) {
  StartWeb("Read=0\n");
  Page("docs/a.txt", "secret");
  EXPECT_EQ(Get("/docs/a.txt"), NotFound());
  EXPECT_TRUE(IsMatch(WebLog(),
                      "时间：....-..-.. ..:..:..  客户机IP：127\\.0\\.0\\.1  请求方法：GET  "
                      "请求资源：docs/a\\.txt  Failed!\r\n"))
      << WebLog();
}

TEST_F(WebServer, RewritesTheCurrentResourceInPlace) {
  StartWeb();
  Page("index.htm", "home");
  Page("ndex.htm", "cut once");
  Page("dir/a.txt", "in dir");
  Page("ir/a.txt", "cut");
  EXPECT_EQ(Get("/"), "home");
  // A request without a resource starts from the text that the last one left.
  EXPECT_EQ(test::Fetch(port_, "GET  HTTP/1.0\r\n\r\n"), "cut once");
  EXPECT_EQ(Get("/dir/a.txt"), "in dir");
  EXPECT_EQ(test::Fetch(port_, "GET"), "cut");
}

TEST_F(WebServer, LeavesOtherRequestsUnansweredAndOpen) {
  StartWeb();
  Page("a.txt", "a");
  Client client(port_);
  for (const char* request : {"HEAD / HTTP/1.0\r\n\r\n", "get / HTTP/1.0\r\n\r\n", "\r\n"}) {
    client.Send(request);
    EXPECT_EQ(client.ReceiveFor(std::chrono::milliseconds(60)), "") << request;
  }
  client.Send("GET /a.txt HTTP/1.0\r\n\r\n");
  EXPECT_EQ(client.ReceiveAll(), "a");
}

TEST_F(WebServer, EndsFilesOfFullPiecesInARunErrorLine) {
  StartWeb();
  Page("empty.txt", "");
  Page("full.txt", std::string(10240, 'f'));
  Page("two.txt", std::string(20480, 't'));
  Page("rest.txt", std::string(25000, 'r'));
  const char* threeLines = "(在 [^\r]*\r\n\r\n){3}";
  EXPECT_EQ(Get("/empty.txt"), "");
  EXPECT_EQ(Get("/full.txt").size(), 10240U);
  EXPECT_EQ(Get("/two.txt").size(), 20480U);
  EXPECT_TRUE(IsMatch(ErrorLog(), threeLines)) << ErrorLog();
  EXPECT_EQ(Get("/rest.txt"), std::string(25000, 'r'));
  EXPECT_TRUE(IsMatch(ErrorLog(), threeLines));
}

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

TEST_F(WebServer, CollectsServedPagesWhileASearchIndexIsThere) {
  StartWeb();
  Page("a.htm", "A");
  Page("sub/b.htm", "B");
  EXPECT_EQ(Get("/a.htm"), "A");
  EXPECT_FALSE(Home().Has("wwwroot/Search/a.htm"));
  Page("Search/Search.ifo", "index");
  Page("Search/a.htm", "older and longer");
  EXPECT_EQ(Get("/a.htm"), "A");
  EXPECT_TRUE(Eventually([&] { return Home().Read("wwwroot/Search/a.htm") == "A"; }));
  EXPECT_EQ(Get("/sub/b.htm"), "B");
  EXPECT_EQ(Get("/missing.htm"), NotFound());
  EXPECT_FALSE(Home().Has("wwwroot/Search/sub"));
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
