// Data connections both ways, whose they are, and what several sessions do to them.

#include <asio/ip/tcp.hpp>
#include <random>

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

// A client's own listener, for active mode. Its port fits what PORT can say.
class ActiveClient {
 public:
  ActiveClient() {
    using asio::ip::tcp;
    asio::error_code error = asio::error::address_in_use;
    for (port_ = 20000 + std::random_device()() % 8000; error && port_ < 32768; ++port_) {
      acceptor_ = tcp::acceptor(context_);
      acceptor_.open(tcp::v4());
      acceptor_.bind({asio::ip::address_v4::loopback(), port_}, error);
      if (!error) break;
    }
    acceptor_.listen();
  }

  /// PORT's argument.
  std::string Argument() const {
    return "127,0,0,1," + std::to_string(port_ / 256) + "," + std::to_string(port_ % 256);
  }

  /// Takes a connection from `port` of this machine for as long as it is kept, so that the system
  /// gives nobody else the same pair of ports. Null where it refuses that port itself.
  std::unique_ptr<asio::ip::tcp::socket> OccupyPairWith(std::uint16_t port) {
    using asio::ip::tcp;
    auto socket = std::make_unique<tcp::socket>(context_, tcp::v4());
    asio::error_code error;
    socket->set_option(asio::socket_base::reuse_address(true));
    socket->bind({asio::ip::address_v4::loopback(), port}, error);
    if (!error) socket->connect({asio::ip::address_v4::loopback(), port_}, error);
    if (error) return nullptr;
    acceptor_.accept();
    return socket;
  }

  std::uint16_t HighByte() const { return port_ / 256; }

  /// Everything that comes on the next connection; `from` is told its port at the server.
  std::string ReceiveAll(std::uint16_t& from) {
    asio::ip::tcp::socket socket = acceptor_.accept();
    from = socket.remote_endpoint().port();
    std::string bytes;
    std::array<char, 4096> buffer;
    asio::error_code error;
    while (!error) {
      const std::size_t count = socket.read_some(asio::buffer(buffer), error);
      bytes.append(buffer.data(), count);
    }
    return bytes;
  }

 private:
  asio::io_context context_;
  asio::ip::tcp::acceptor acceptor_{context_};
  std::uint16_t port_ = 0;
};

using FtpDataConnectionsTest = FtpServerTest;

TEST_F(FtpDataConnectionsTest, ActiveModeTakesAnyPortWhereTheSystemRefusesTheStatedOne) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  ActiveClient active;
  const auto stated = static_cast<std::uint16_t>(active.HighByte() + 1);
  const auto occupied = active.OccupyPairWith(stated);
  if (!occupied) GTEST_SKIP() << "ports below 1024 are refused here from the start";
  client.Ask("PWD");
  ASSERT_EQ(client.Ask("PORT " + active.Argument()), "200 \r\n");
  client.Tell("RETR /a.txt");
  std::uint16_t from = 0;
  EXPECT_EQ(active.ReceiveAll(from), "hello");
  EXPECT_NE(from, stated);
}

TEST_F(FtpDataConnectionsTest, ASecondPassiveConnectionReplacesTheFirst) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  const std::uint16_t port = FtpClient::PortOf(client.Ask("PASV"));
  Client first(port);
  Client second(port);
  EXPECT_TRUE(first.SeesEnd());
  client.Tell("RETR /a.txt");
  EXPECT_EQ(second.ReceiveAll(), "hello");
  // The listener stays open after an accept, and after QUIT.
  client.Ask("NOOP");
  client.Ask("QUIT");
  EXPECT_TRUE(Accepts(port));
}

TEST_F(FtpDataConnectionsTest, CommandsAreServedWhileATransferStands) {
  Put("big.bin", Content(30000000));
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
  EXPECT_EQ(client.Ask("PWD"), "257 \"/\" command successful. \r\n");
  EXPECT_EQ(other.Ask("NOOP"), "200 \r\n");
  OnLoop([&] {
    const auto connections = TheServer().Connections();
    ASSERT_EQ(connections.size(), 2U);
    EXPECT_THAT(connections[0].activity.what, testing::HasSubstr("RETR "));
    EXPECT_EQ(connections[0].activity.total, 30000000U);
    EXPECT_EQ(connections[1].activity.what, "NOOP");
  });
  EXPECT_EQ(data->ReceiveAll().size(), 30000000U);
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

}  // namespace
}  // namespace test
