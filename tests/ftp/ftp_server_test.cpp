// What neither conversations nor the interpreter alone can test: the service's start and stop, its
// reports, and sessions that affect each other.

#include <filesystem>

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

TEST_F(FtpServerTest, APortThatIsNotANumberKeepsTheServiceFromStarting) {
  StopServer();
  WriteSettings("many", "");
  EXPECT_FALSE(StartServer());
  EXPECT_NE(ErrorLog().find("FtpPort"), std::string::npos);
  WriteSettings("0", "");
  EXPECT_TRUE(StartServer());
  FtpClient client = Connect();
  client.Ask("CWD /");  // now every path may be changed
  EXPECT_EQ(client.Ask("MKD x"), "257 " + Home().Text("ftproot") + "\\已经创建\r\n");
  // The separator is not written to the settings.
  OnLoop([&] { EXPECT_EQ(TheServer().Options().ftpRoot, Home().Text("ftproot")); });
}

TEST_F(FtpServerTest, AStopEndsEverySessionAndAStartCanFollowAtOnce) {
  FtpClient waiting = Connect();
  waiting.Tell("LIST");
  FtpClient connected = Connect();
  connected.Ask("CWD /up");
  const auto data = connected.OpenPassive();
  connected.Ask("STOR a");
  OnLoop([&] {
    EXPECT_TRUE(TheServer().Stop());
    EXPECT_TRUE(TheServer().Start());
  });
  EXPECT_TRUE(waiting.Control().SeesEnd());
  data->ReceiveAll();
  connected.Control().ReceiveAll();
  Connect();
  EXPECT_EQ(Connect().Ask("PWD"), "257 \"/\" command successful. \r\n");  // slot 2 forgot "/up"
}

TEST_F(FtpServerTest, ASecondPassiveConnectionReplacesTheFirstAndTheListenerStays) {
  Put("a.txt", "hello");
  FtpClient client = Connect();
  const std::uint16_t port = FtpClient::PortOf(client.Ask("PASV"));
  EXPECT_TRUE(port >= 1024 && port <= 1279) << port;
  Client first(port);
  Client second(port);
  EXPECT_TRUE(first.SeesEnd());
  EXPECT_EQ(client.Ask("RETR /a.txt"), kSending);
  EXPECT_EQ(second.ReceiveAll(), "hello");
  EXPECT_EQ(client.Reply(), "226 \r\n");
  client.Ask("QUIT");
  EXPECT_TRUE(Accepts(port));
}

TEST_F(FtpServerTest, CommandsAreAnsweredDuringATransferWhichIsWhatTheReportShows) {
  Put("big.bin", std::string(30000000, 'x'));
  FtpClient client = Connect();
  FtpClient other = Connect();
  const auto data = client.OpenPassive();
  EXPECT_EQ(client.Ask("RETR /big.bin"), kSending);
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
  EXPECT_EQ(other.Ask("NOOP"), "200 \r\n");
  OnLoop([&] {
    const auto connections = TheServer().Connections();
    ASSERT_EQ(connections.size(), 2U);
    EXPECT_EQ(connections[0].activity.what, "RETR big.bin");
    EXPECT_EQ(connections[0].activity.total, 30000000U);
    EXPECT_EQ(connections[1].activity.what, "NOOP");
  });
  EXPECT_EQ(data->ReceiveAll().size(), 30000000U);
  EXPECT_EQ(client.Reply(), "226 \r\n");
}

TEST_F(FtpServerTest, OneEntryThatCannotBeInspectedSpoilsTheListing) {
  std::error_code error;
  std::filesystem::create_symlink("nowhere", Home().Path("ftproot/b.txt"), error);
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  FtpClient client = Connect();
  client.Ask("PWD");
  EXPECT_EQ(client.Fetch("LIST").after, "451 \r\n");
}

TEST_F(FtpServerTest, WithoutADirectoryTheRootOfTheDriveIsMeant) {
  Put("x.txt", "here");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(Home().Native());  // the drive is that of the current directory
  FtpClient client = Connect();
  const std::string name = Home().Path("ftproot/x.txt").relative_path().generic_string();
  EXPECT_EQ(client.Fetch("RETR " + name).bytes, "here");
  client.Ask("CWD " + Home().Path("ftproot").relative_path().generic_string());
  EXPECT_THAT(client.Fetch("LIST").bytes, testing::HasSubstr(" x.txt\r\n"));
  std::filesystem::current_path(before);
}

TEST_F(FtpServerTest, AllUploadsAddToOneCountThatStorResets) {
  for (const auto& [content, count] : {std::pair("12345", 5), std::pair("", 0)}) {
    FtpClient client = Connect();
    client.Ask("CWD /up");
    const auto data = client.OpenPassive();
    client.Ask("STOR a");
    data->Send(content);
    data->Close();
    client.Reply();
    OnLoop([&] { EXPECT_EQ(TheServer().State().uploadByteCount, count); });
  }
}

}  // namespace
}  // namespace test
