#pragma once

#include <string>

#include "tests/support/server_fixture.h"
#include "web/web_server.h"

namespace test {

/// A Web server with its root in the program directory, on a port that the system chose.
class WebFixture : public ServerFixture<ModWeb::WebServer> {
 protected:
  void SetUp() override {
    Home().Write("Server.ini",
                 "[WebServer Options]\nStartDefaultPage=1\nTCPPort=0\nDNS=localhost\nRead=1\n"
                 "optAppDone=True\nWebRootDir=" +
                     Home().Path("wwwroot").string() + "\n");
    Home().Write("wwwroot/small.txt", "small");
    ASSERT_TRUE(StartServer());
    OnLoop([this] { port_ = TheServer().ListeningPort(); });
  }
  std::string Get(const std::string& resource) {
    Client client(port_);
    client.Send("GET " + resource + " HTTP/1.0\r\n\r\n");
    return client.ReceiveAll();
  }

  std::uint16_t port_ = 0;
};

}  // namespace test
