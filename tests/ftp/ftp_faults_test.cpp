// Clients that vanish or stall, and files that change during a transfer.

#include <filesystem>
#include <fstream>

#include "tests/ftp/ftp_fixture.h"
#include "tests/support/open_files.h"

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBig = 30000000;

class FtpFaultsTest : public FtpServerTest {
 protected:
  // Waits until this process has no file of the program directory open.
  bool ClosesAllFiles() {
    return Eventually([this] { return !HasOpenFileIn(Home().Native()); });
  }
};

TEST_F(FtpFaultsTest, AClientThatVanishesInItsTransfersLeavesNothingOpen) {
  Put("big.bin", std::string(kBig, 'x'));
  for (const auto end : {&Client::Reset, &Client::Close}) {
    for (const bool endsControl : {true, false}) {
      Put("up/a.txt", "");
      FtpClient downloader = Connect();
      const auto down = downloader.OpenPassive();
      EXPECT_EQ(downloader.Ask("RETR /big.bin"), kSending);
      FtpClient uploader = Connect();
      uploader.Ask("CWD /up");
      const auto up = uploader.OpenPassive();
      uploader.Ask("STOR a.txt");
      up->Send("begun");
      EXPECT_TRUE(Eventually([&] { return Home().Read("ftproot/up/a.txt") == "begun"; }));
      ((endsControl ? downloader : *down).*end)();
      ((endsControl ? uploader : *up).*end)();
      EXPECT_TRUE(ClosesAllFiles());
      if (endsControl) {
        EXPECT_LT(down->ReceiveAll().size(), kBig);
        EXPECT_TRUE(up->SeesEnd());
      } else {
        EXPECT_EQ(downloader.ReceiveLine(), "226 \r\n");
        EXPECT_EQ(downloader.Fetch("RETR /big.bin").size(), kBig + 6);
      }
    }
  }
}

#ifndef _WIN32  // which does not report an end behind bytes that are not read
TEST_F(FtpFaultsTest, AClientThatVanishesWhileItsCommandsWaitFreesItsSlot) {
  {
    FtpClient client = Connect();
    for (std::size_t i = 1; i <= 64; ++i) {
      client.Send("LIST\r\n");
      EXPECT_TRUE(Eventually([&] { return TheServer().TotalTraffic().received == 6 * i; }));
    }
    client.Send("unread");
  }
  EXPECT_TRUE(Eventually([&] { return TheServer().Connections().empty(); }));
}
#endif

TEST_F(FtpFaultsTest, AFileThatShrinksEndsItsDownloadAndADeletedOneIsSentWhole) {
  FtpClient client = Connect();
  for (const bool deleted : {true, false}) {
    Put("big.bin", std::string(kBig, 'x'));
    const auto data = client.OpenPassive();
    EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
    data->Receive(1);  // the file is opened after the reply
    std::error_code error;
    if (deleted) {
      fs::remove(Home().Path("ftproot/big.bin"), error);
    } else {
      fs::resize_file(Home().Path("ftproot/big.bin"), kBig / 2, error);
    }
    if (error) GTEST_SKIP() << "an open file cannot be changed here: " << error.message();
    EXPECT_EQ(data->ReceiveAll().size() == kBig - 1, deleted);
    EXPECT_EQ(client.ReceiveLine(), deleted ? "226 \r\n" : "426 \r\n");
  }
}

TEST_F(FtpFaultsTest, AStalledDownloadKeepsOnePieceInMemory) {
  if (!fs::exists("/proc/self/statm")) GTEST_SKIP() << "memory use is not reported here";
  Put("huge.bin", "");
  fs::resize_file(Home().Path("ftproot/huge.bin"), 400000000);
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
