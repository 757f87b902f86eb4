// What conversations cannot test: the service's start and stop, its reports, other programs' ports,
// and what a folder's size counts.

#include <asio/ip/tcp.hpp>
#include <filesystem>
#include <vector>

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

TEST_F(FtpServerTest, APortThatIsNotANumberKeepsTheServiceFromStarting) {
  StopServer();
  Home().Write("Server.ini", "[FtpServer Options]\r\nFtpPort=many\r\n");
  EXPECT_FALSE(StartServer());
  EXPECT_THAT(ErrorLog(), HasSubstr("FtpPort"));
}

TEST_F(FtpServerTest, AStopEndsEverySessionAndAStartCanFollowAtOnce) {
  FtpClient waiting = Connect();
  waiting.Send("LIST\r\n");
  FtpClient uploader = Connect();
  uploader.Ask("CWD /up");
  const auto data = uploader.OpenPassive();
  uploader.Ask("STOR a");
  OnLoop([&] {
    EXPECT_TRUE(TheServer().Stop());
    EXPECT_TRUE(TheServer().Start());
  });
  EXPECT_TRUE(waiting.SeesEnd());
  EXPECT_TRUE(data->SeesEnd());
  EXPECT_TRUE(uploader.SeesEnd());
  Connect();
  EXPECT_EQ(Connect().Ask("PWD"), "257 \"/\" command successful. \r\n");  // slot 2 forgot "/up"
}

TEST_F(FtpServerTest, ASecondPassiveConnectionReplacesTheFirstAndTheListenerStays) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  const std::uint16_t port = client.AskForPort();
  Client first(port);
  Client second(port);
  EXPECT_TRUE(first.SeesEnd());
  EXPECT_EQ(client.Ask("RETR /a.txt"), kSending);
  EXPECT_EQ(second.ReceiveAll(), "hello");
  EXPECT_EQ(client.ReceiveLine(), "226 \r\n");
  client.Ask("QUIT");
  Client third(port);
  EXPECT_EQ(client.Ask("RETR /a.txt"), kSending);
}

// Nearly all ports are taken, so a server that ignores a failure to listen names one of them.
TEST_F(FtpServerTest, PasvNamesAPortThatNoOtherProgramListensOn) {
  using Acceptor = asio::ip::tcp::acceptor;
  Put("a.txt", "hello");
  asio::io_context context;
  std::vector<Acceptor> others;
  for (std::uint16_t port = 1030; port < 1280; ++port) {
    std::error_code error;
    Acceptor& other = others.emplace_back(context, asio::ip::tcp::v4());
    other.set_option(Acceptor::reuse_address(true));  // it may have been used just now
    other.bind({asio::ip::tcp::v4(), port}, error);
    if (!error) other.listen(1, error);
  }
  EXPECT_EQ(Connect().Fetch("RETR /a.txt"), "hello226 \r\n");
}

TEST_F(FtpServerTest, ReportsTransfersInPlaceOfCommandsAndNoPasswords) {
  const std::string content(30000000, 'x');
  Put("big.bin", content);
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
  for (const auto& [said, shown] : {std::pair("PASS secret", "PASS"), {"NOOP a\r\nb", "NOOP a"}}) {
    other.Ask(said);
    OnLoop([&, shown = shown] {
      const auto connections = TheServer().Connections();
      ASSERT_EQ(connections.size(), 2U);
      EXPECT_EQ(connections[0].activity.what, "big.bin");
      EXPECT_EQ(connections[0].activity.total, content.size());
      EXPECT_EQ(connections[1].activity.what, shown);
    });
  }
  EXPECT_TRUE(data->ReceiveAll() == content);
}

TEST_F(FtpServerTest, TellsWhatBecameOfEveryTransferAndChange) {
  ActivityLog log;
  OnLoop([&] { TheServer().Observe(&log); });
  Put("a.txt", "hello");
  Put("big.bin", std::string(30000000, 'x'));
  FtpClient client = Connect();
  const auto download = [&] {
    auto data = client.OpenPassive();
    client.Ask("RETR /big.bin");
    data->Receive(1000);
    return data;
  };
  const auto refused = client.OpenPassive();
  for (const char* command : {"STOR new.bin", "USER x", "CWD /up"}) client.Ask(command);
  for (const char* command : {"RETR /a.txt", "RETR none.txt", "LIST"}) client.Fetch(command);
  client.OpenPassive()->Send("new");
  client.Ask("STOR new.bin");
  client.ReceiveLine();
  for (const char* command : {"RNFR new.bin", "RNTO b.bin", "DELE b.bin", "DELE b.bin",
                              "DELE /a.txt", "MKD d", "RMD d"}) {
    client.Ask(command);
  }
  download()->Reset();
  client.ReceiveLine();
  const auto replaced = download();
  const auto cut = download();
  OnLoop([&] { TheServer().Disconnect("FTP", log.last.slot); });
  EXPECT_THAT(log.lines,
              testing::ElementsAre(
                  "上传 new.bin 没有许可", "下载 a.txt 完成", "下载 up/none.txt 没有找到",
                  "浏览 /up 完成", "上传 up/new.bin 完成", "改名 up/new.bin → up/b.bin 完成",
                  "删除 up/b.bin 完成", "删除 up/b.bin 没有找到", "删除 a.txt 没有许可",
                  "新建文件夹 /up/d 完成", "删除文件夹 /up/d 完成", "下载 big.bin 对方中断",
                  "下载 big.bin 对方中断", "下载 big.bin 已被断开"));
  OnLoop([&] { TheServer().Observe(nullptr); });
}

TEST_F(FtpServerTest, AFolderCountsHiddenFilesAndNoLinksAndALinkToNothingSpoilsTheListing) {
  Put("d/.hidden", "123");
  Put("d/deep/deeper/two.txt", "12345");
  FtpClient client = Connect();
  client.Ask("PWD");
  EXPECT_THAT(client.Fetch("LIST"), HasSubstr("group   8 "));
  std::error_code error;
  fs::create_directory_symlink(Home().Path("ftproot/d"), Home().Path("ftproot/d/loop"), error);
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  fs::create_symlink(Home().Path("ftproot/d/.hidden"), Home().Path("ftproot/d/link"));
  EXPECT_THAT(client.Fetch("LIST"), HasSubstr("group   8 "));
  fs::create_symlink("nowhere", Home().Path("ftproot/b.txt"));
  EXPECT_EQ(client.Fetch("LIST"), "451 \r\n");
}

TEST_F(FtpServerTest, SizesFitSignedThirtyTwoBits) {
  FtpClient client = Connect();
  client.Ask("PWD");
  for (const char* file : {"d/a", "b"}) {
    for (const bool fits : {true, false}) {
      Put(file, "");
      std::error_code error;
      fs::resize_file(Home().Path("ftproot") / file, (1U << 31) - (fits ? 1 : 0), error);
      if (error) GTEST_SKIP() << "no sparse files here: " << error.message();
      EXPECT_THAT(client.Fetch("LIST"), HasSubstr(fits ? "\r\n226 " : "451 \r\n"));
    }
    fs::remove_all(Home().Path("ftproot/d"));
  }
}

}  // namespace
}  // namespace test
