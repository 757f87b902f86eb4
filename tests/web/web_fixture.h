#pragma once

#include <string>

#include "tests/support/server_fixture.h"
#include "web/web_server.h"

namespace test {

/// A Web server with its root in the program directory, on a port that the system chose.
class WebFixture : public ServerFixture<ModWeb::WebServer> {
 protected:
  void StartWeb(const std::string& moreSettings = "Read=1\noptAppDone=True\n") {
    Home().Write("Server.ini",
                 "[WebServer Options]\nWebRootDir=" + Home().Path("wwwroot").string() +
                     "\nTCPPort=0\nDNS=localhost\nStartDefaultPage=1\n" + moreSettings);
    Home().Write("wwwroot/placeholder", "");
    ASSERT_TRUE(StartServer());
    OnLoop([this] { port_ = TheServer().ListeningPort(); });
  }
  void Page(const std::string& name, const std::string& content) {
    Home().Write("wwwroot/" + name, content);
  }
  std::string Get(const std::string& resource) {
    return Fetch(port_, "GET " + resource + " HTTP/1.0\r\n\r\n");
  }

  std::uint16_t port_ = 0;
};

}  // namespace test
