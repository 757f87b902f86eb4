#include "web/web_options.h"

#include "tests/support/server_fixture.h"

namespace {

using testing::ElementsAre;

class WebSettings : public test::ProgramFixture {
 protected:
  void Load() { EXPECT_TRUE(options_.LoadWebOptions(Program(), "192.0.2.7")); }
  ModWeb::WebOptions options_;
};

TEST_F(WebSettings, HaveTheirDefaultsOnlyWhileTheFileIsMissing) {
  Load();
  EXPECT_EQ(options_.WebRootDir, Home().Text("wwwroot"));
  EXPECT_EQ(options_.WebDomain, "localhost");
  EXPECT_EQ(options_.WebPort, 80);
  EXPECT_EQ(options_.WebLocalIP, "127.0.0.1");
  EXPECT_THAT(options_.WebRights, ElementsAre("1", "0", "0"));
  EXPECT_THAT(options_.AppOptions, ElementsAre("False", "True"));

  Home().Write("Server.ini", "[WebServer Options]\nTCPPort=x\nStartDefaultPage=0\nDNS=x.example\n");
  Load();
  EXPECT_EQ(options_.WebRootDir, "");
  EXPECT_EQ(options_.WebDomain, "x.example");
  EXPECT_EQ(options_.WebPort, 80);
  EXPECT_EQ(options_.WebLocalIP, "192.0.2.7");
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("[WebServer Options] TCPPort: cannot convert \"x\""));
  EXPECT_FALSE(options_.MayRead() || options_.MayRunPrograms());
  EXPECT_TRUE(options_.StartDefaultPage);
}

TEST_F(WebSettings, ReadElevenDefaultPagesAndKeepThoseTheFileHasNoLineFor) {
  Load();
  EXPECT_EQ(options_.FirstDefaultPage, "index.htm");
  EXPECT_EQ(options_.DefaultPages[1], "default.htm");
  Home().Write("IndexFN.Log", "首页.htm\r\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11");
  Load();
  EXPECT_EQ(options_.FirstDefaultPage, "首页.htm");
  EXPECT_EQ(options_.DefaultPages[10], "11");
  EXPECT_EQ(ErrorLog(), "");
  Home().Write("IndexFN.Log", "x.htm\r\n");
  Load();
  EXPECT_EQ(options_.FirstDefaultPage, "x.htm");
  EXPECT_EQ(options_.DefaultPages[10], "11");
}

}  // namespace
