// Clients that vanish, disks that fail and files that change under a transfer.

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
  // Takes the slots that come before slot 1's next turn.
  void SkipToSlotOne(int lastUsed) {
    for (int slot = lastUsed + 1; slot <= 19; ++slot) Connect();
  }

  // The files below the root that this program has open.
  static int OpenFiles(const std::filesystem::path& root) {
    int count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
      const auto target = std::filesystem::read_symlink(entry.path(), error);
      if (target.string().starts_with(root.string())) ++count;
    }
    return count;
  }
  bool ClosesAllFiles() {
    return Eventually([this] { return OpenFiles(Home().Native()) == 0; });
  }
};

// Whether the system tells that a peer has gone while bytes of it have not been read.
bool TellsOfTheEndEarly() {
  using asio::ip::tcp;
  asio::io_context context;
  tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
  Client client(acceptor.local_endpoint().port());
  tcp::socket peer = acceptor.accept();
  client.Send("unread");
  client.Close();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  return platform::HasPeerShut(static_cast<platform::NativeSocket>(peer.native_handle()));
}

TEST_F(FtpFaultsTest, AThousandListsWithoutADataConnectionLeaveTheSlotUsable) {
  if (!TellsOfTheEndEarly()) GTEST_SKIP() << "not told here";
  {
    FtpClient client = Connect();
    for (int i = 0; i < 1000; ++i) client.Tell("LIST");
    EXPECT_TRUE(client.HearsNothing());
  }
  SkipToSlotOne(1);
  // The client's end stands behind commands that nobody reads; it is looked for now and then.
  std::string greeting;
  for (int i = 0; i < 100 && greeting.empty(); ++i) {
    FtpClient next(Port());
    greeting = next.Greeting();
    if (greeting.empty()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      for (int slot = 2; slot <= 19; ++slot) Connect();
    }
  }
  EXPECT_EQ(greeting, "220 连接FTP服务器成功 \r\n");
}

TEST_F(FtpFaultsTest, AClientThatVanishesInADownloadLeavesNothingOpen) {
  Put("big.bin", std::string(kBig, 'x'));
  FtpClient client = Connect();
  for (const bool reset : {true, false}) {
    const auto data = client.OpenPassive();
    EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
    data->Receive(100000);
    reset ? data->Reset() : data->Close();
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
    ASSERT_TRUE(Eventually([&] { return File("up/a.txt") == "begun"; }));
    for (FtpClient* one : {&client, &uploader}) {
      reset ? one->Control().Reset() : one->Control().Close();
    }
    EXPECT_LT(down->ReceiveAll().size(), kBig);
    up->ReceiveAll();
    EXPECT_TRUE(ClosesAllFiles());
  }
}

TEST_F(FtpFaultsTest, AFileThatShrinksInADownloadEndsIt) {
  Put("big.bin", std::string(kBig, 'x'));
  FtpClient client = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  data->Receive(1);  // the reply comes before the file is opened
  std::error_code error;
  std::filesystem::resize_file(Home().Path("ftproot/big.bin"), kBig / 2, error);
  if (error) GTEST_SKIP() << "an open file keeps its size here: " << error.message();
  EXPECT_LT(data->ReceiveAll().size(), kBig);
  EXPECT_EQ(client.Reply(), "426 \r\n");
  EXPECT_TRUE(ClosesAllFiles());
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
}

TEST_F(FtpFaultsTest, AFileThatIsDeletedInADownloadIsSentToItsEnd) {
  Put("big.bin", std::string(kBig, 'x'));
  FtpClient client = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  data->Receive(1);  // the reply comes before the file is opened
  std::error_code error;
  if (!std::filesystem::remove(Home().Path("ftproot/big.bin"), error)) {
    GTEST_SKIP() << "an open file stays here: " << error.message();
  }
  EXPECT_EQ(data->ReceiveAll().size(), kBig - 1);
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

TEST_F(FtpFaultsTest, AFullDiskEndsTheUpload) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no disk that is always full here";
  FtpClient client = Connect();
  client.Ask("CWD /up");
  std::filesystem::create_symlink("/dev/full", Home().Path("ftproot/up/full"));
  EXPECT_EQ(client.Store("full", std::string(1000000, 'x')).after, kRefused);
  EXPECT_EQ(client.Store("a.txt", "bytes").after, "226 stor command completed\r\n");
}

// A slow reader's file must not pile up here.
TEST_F(FtpFaultsTest, AStandingDownloadKeepsOnePieceInMemory) {
  if (!std::filesystem::exists("/proc/self/statm")) GTEST_SKIP() << "memory is not told here";
  constexpr std::size_t kHuge = 400000000;
  Put("huge.bin", "");
  std::filesystem::resize_file(Home().Path("ftproot/huge.bin"), kHuge);
  const auto residentPages = [] {
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return resident;
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
