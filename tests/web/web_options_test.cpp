#include "web/web_options.h"

#include "tests/support/server_fixture.h"

namespace {

using ModWeb::WebOptions;
using testing::ElementsAre;
using testing::HasSubstr;

class WebSettings : public test::ProgramFixture {
 protected:
  void Load() { EXPECT_TRUE(options_.LoadWebOptions(Program(), "192.0.2.7")); }
  WebOptions options_;
};

TEST_F(WebSettings, HaveTheirDefaultsOnlyWhileTheFileIsMissing) {
  Load();
  EXPECT_EQ(options_.WebRootDir, Home().Text("wwwroot"));
  EXPECT_EQ(options_.WebDomain, "localhost");
  EXPECT_EQ(options_.WebPort, 80);
  EXPECT_EQ(options_.WebLocalIP, "127.0.0.1");
  EXPECT_THAT(options_.WebRights, ElementsAre("1", "0", "0"));
  EXPECT_THAT(options_.AppOptions, ElementsAre("False", "True"));
  EXPECT_EQ(options_.FirstDefaultPage, "index.htm");
  EXPECT_EQ(options_.DefaultPages[1], "default.htm");

  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=81\nStartDefaultPage=0\n");
  Load();
  EXPECT_EQ(options_.WebRootDir, "");
  EXPECT_EQ(options_.WebPort, 81);
  EXPECT_EQ(options_.WebLocalIP, "192.0.2.7");
  EXPECT_FALSE(options_.MayRead());
  EXPECT_FALSE(options_.MayRunPrograms());
  EXPECT_TRUE(options_.StartDefaultPage);
}

TEST_F(WebSettings, KeepWhatCannotBeConvertedAndGoOn) {
  Home().Write("Server.ini",
               "[WebServer Options]\nTCPPort=40000\nStartDefaultPage=\nRead=true\nDNS=x.example\n");
  Load();
  EXPECT_EQ(options_.WebPort, 80);
  EXPECT_EQ(options_.WebDomain, "x.example");
  EXPECT_TRUE(options_.MayRead());
  EXPECT_THAT(ErrorLog(), HasSubstr("TCPPort"));
  EXPECT_THAT(ErrorLog(), HasSubstr("StartDefaultPage"));
}

TEST_F(WebSettings, ReadDefaultPagesLineByLineAndKeepTheRest) {
  Home().Write("IndexFN.Log", "a.htm\r\n首页.htm\r\nc.htm");
  Load();
  EXPECT_EQ(options_.DefaultPages[1], "首页.htm");
  EXPECT_EQ(options_.DefaultPages[2], "c.htm");
  Home().Write("IndexFN.Log", "x.htm\r\n");
  Load();
  EXPECT_EQ(options_.FirstDefaultPage, "x.htm");
  EXPECT_EQ(options_.DefaultPages[1], "首页.htm");
}

TEST_F(WebSettings, ATwelfthDefaultPageEndsTheReadingOnly) {
  std::string lines;
  for (int i = 1; i <= 12; ++i) lines += std::to_string(i) + "\r\n";
  Home().Write("IndexFN.Log", lines);
  Load();
  EXPECT_EQ(options_.DefaultPages[10], "11");
  EXPECT_THAT(ErrorLog(), HasSubstr("IndexFN.Log"));
}

}  // namespace
