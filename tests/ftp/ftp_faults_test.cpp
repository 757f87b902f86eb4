// Clients that vanish, disks that fail and files that change during a transfer.

#include <asio/ip/tcp.hpp>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/socket_options.h"
#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

constexpr std::size_t kBig = 30000000;

class FtpFaultsTest : public FtpServerTest {
 protected:
  // Whether this process has a file of the program directory open.
  bool HasOpenFiles() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
      const auto target = std::filesystem::read_symlink(entry.path(), error);
      if (target.string().starts_with(Home().Native().string())) return true;
    }
    return false;
  }
  // Whether slot 1 has a command that waits. On the loop only.
  bool IsWaiting() {
    const auto connections = TheServer().Connections();
    return !connections.empty() && connections[0].activity.what == "LIST";
  }
  bool ClosesAllFiles() {
    return Eventually([this] { return !HasOpenFiles(); });
  }
};

// Whether the system reports that a peer has gone before its last bytes have been read.
bool TellsOfTheEndEarly() {
  using asio::ip::tcp;
  asio::io_context context;
  tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
  Client client(acceptor.local_endpoint().port());
  tcp::socket peer = acceptor.accept();
  client.Send("unread");
  client.Close();
  for (int i = 0; i < 100; ++i) {
    if (platform::HasPeerShut(static_cast<platform::NativeSocket>(peer.native_handle())))
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

TEST_F(FtpFaultsTest, AThousandListsWithoutADataConnectionLeaveTheSlotUsable) {
  if (!TellsOfTheEndEarly()) GTEST_SKIP() << "not reported here";
  {
    FtpClient client = Connect();
    for (int i = 0; i < 1000; ++i) client.Tell("LIST");
    EXPECT_TRUE(Eventually([&] { return IsWaiting(); }));
  }
  // The client's end comes after commands that are not read; the server looks for it regularly.
  EXPECT_TRUE(Eventually([&] { return TheServer().Connections().empty(); }));
  for (int slot = 2; slot <= 19; ++slot) Connect();
  FtpClient next = Connect();  // slot 1 again
  next.Ask("PWD");
  EXPECT_EQ(next.Fetch("LIST").after, "226 Transfer complete.\r\n");
}

TEST_F(FtpFaultsTest, AClientThatVanishesInADownloadLeavesNothingOpen) {
  Put("big.bin", std::string(kBig, 'x'));
  FtpClient client = Connect();
  for (const bool reset : {true, false}) {
    const auto data = client.OpenPassive();
    EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
    data->Receive(100000);
    (data.get()->*(reset ? &Client::Reset : &Client::Close))();
    EXPECT_EQ(client.Reply(), "226 \r\n");
    EXPECT_TRUE(ClosesAllFiles());
  }
  EXPECT_EQ(client.Fetch("RETR /big.bin").bytes.size(), kBig);
}

TEST_F(FtpFaultsTest, TheEndOfTheControlConnectionEndsItsTransfers) {
  Put("big.bin", std::string(kBig, 'x'));
  for (const bool reset : {true, false}) {
    FtpClient client = Connect();
    const auto down = client.OpenPassive();
    EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
    FtpClient uploader = Connect();
    uploader.Ask("CWD /up");
    const auto up = uploader.OpenPassive();
    uploader.Ask("STOR a.txt");
    up->Send("begun");
    ASSERT_TRUE(Eventually([&] { return Home().Read("ftproot/up/a.txt") == "begun"; }));
    const auto end = reset ? &Client::Reset : &Client::Close;
    (client.Control().*end)();
    (uploader.Control().*end)();
    EXPECT_LT(down->ReceiveAll().size(), kBig);
    up->ReceiveAll();
    EXPECT_TRUE(ClosesAllFiles());
  }
}

TEST_F(FtpFaultsTest, AFileThatShrinksEndsItsDownloadAndADeletedOneIsSentWhole) {
  FtpClient client = Connect();
  for (const bool deleted : {true, false}) {
    Put("big.bin", std::string(kBig, 'x'));
    const auto data = client.OpenPassive();
    EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
    data->Receive(1);  // the file is opened after the reply
    std::error_code error;
    if (deleted) {
      std::filesystem::remove(Home().Path("ftproot/big.bin"), error);
    } else {
      std::filesystem::resize_file(Home().Path("ftproot/big.bin"), kBig / 2, error);
    }
    if (error) GTEST_SKIP() << "an open file cannot be changed here: " << error.message();
    EXPECT_EQ(data->ReceiveAll().size() == kBig - 1, deleted);
    EXPECT_EQ(client.Reply(), deleted ? "226 \r\n" : "426 \r\n");
    EXPECT_TRUE(ClosesAllFiles());
  }
}

TEST_F(FtpFaultsTest, AStalledDownloadKeepsOnePieceInMemory) {
  if (!std::filesystem::exists("/proc/self/statm"))
    GTEST_SKIP() << "memory use is not reported here";
  constexpr std::size_t kHuge = 400000000;
  Put("huge.bin", "");
  std::filesystem::resize_file(Home().Path("ftproot/huge.bin"), kHuge);
  const auto residentPages = [] {
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    statm >> pages >> pages;  // the size of the process, then what is in memory
    return pages;
  };
  FtpClient client = Connect();
  const auto data = client.OpenPassive();
  const long before = residentPages();
  EXPECT_EQ(client.Ask("RETR /huge.bin"), kSending);
  EXPECT_EQ(data->Receive(1000000).size(), 1000000U);
  EXPECT_LT(residentPages() - before, 100000000 / 4096);
}

}  // namespace
}  // namespace test
