// What the commands on the control connection keep, and what becomes of their sessions.

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

using FtpCommandsTest = FtpServerTest;

TEST_F(FtpCommandsTest, AllSessionsShareLastCommandAndType) {
  FtpClient one = Connect();
  FtpClient two = Connect();
  one.Ask("NOOP");
  two.Ask("TYPE i");
  one.Ask("PWD");
  OnLoop([&] {
    EXPECT_EQ(TheServer().State().lastCommand, "NOOP");
    EXPECT_EQ(TheServer().State().transferType, "i");
  });
  two.Ask("USER x");
  one.Ask("TYPE X");
  OnLoop([&] {
    EXPECT_EQ(TheServer().State().lastCommand, "USER");
    EXPECT_EQ(TheServer().State().transferType, "A");
  });
}

TEST_F(FtpCommandsTest, CwdGivesTheRootItsSeparatorButNotTheSettings) {
  Connect().Ask("CWD /");
  OnLoop([&] {
    EXPECT_EQ(TheServer().State().ftpRoot, Root() + "\\");
    EXPECT_EQ(TheServer().Options().ftpRoot, Root());
  });
}

TEST_F(FtpCommandsTest, APortThatIsNoNumberKeepsTheServiceFromStarting) {
  StopServer();
  WriteSettings("many", "");
  EXPECT_FALSE(StartServer());
  EXPECT_NE(ErrorLog().find("FtpPort"), std::string::npos);
  WriteSettings("0", "");
  EXPECT_TRUE(StartServer());
}

TEST_F(FtpCommandsTest, AStopEndsEverySessionAndAStartCanFollowAtOnce) {
  FtpClient waiting = Connect();
  waiting.Tell("LIST");
  FtpClient connected = Connect();
  const auto data = connected.OpenPassive();
  connected.Tell("STOR up\\a");
  OnLoop([&] { EXPECT_TRUE(TheServer().Stop()); });
  EXPECT_TRUE(waiting.Control().SeesEnd());
  data->ReceiveAll();
  connected.Control().ReceiveAll();
  OnLoop([&] { EXPECT_TRUE(TheServer().Start()); });
  EXPECT_EQ(Connect().Ask("PWD"), "257 \"/\" command successful. \r\n");
}

}  // namespace
}  // namespace test
