// The commands on the control connection: replies byte for byte, and what they keep.

#include <tuple>
#include <vector>

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

using FtpCommandsTest = FtpServerTest;

TEST_F(FtpCommandsTest, GreetsAndAnswersByteForByte) {
  FtpClient client(Port());
  EXPECT_EQ(client.Greeting(), "220 连接FTP服务器成功 \r\n");
  const std::vector<std::tuple<std::string, std::string>> cases = {
      {"USER anybody", "331 Anonymous access allowed, send identity (e-mail name) as password. "},
      {"USER", "331 Anonymous access allowed, send identity (e-mail name) as password. "},
      {"PASS a@b", "230 Anonymous user logged in. "},
      {"OPTS UTF8 ON", "500 "},
      {"SYST", "421 "},
      {"SITE HELP", "421 "},
      {"SITE help", "421 "},
      {"SITE CHMOD 777 a", "500 "},
      {"SITE", "500 "},
      {"PWD", "257 \"/\" command successful. "},
      {"pwd", "257 \"/\" command successful. "},
      {"TYPE I", "200 "},
      {"TYPE A N", "200 "},
      {"TYPE", "200 "},
      {"NOOP", "200 "},
      {"REST 100", "500 Restarting at 100"},
      {"REST 5", "500 Restarting at 5"},
      {"REST", "500 Restarting at 0"},
      {"FEAT", "500 "},
      {"SIZE a.txt", "350 "},
      {"SIZE", "350 "},
      {"ABOR", "500 "},
      {"NLST", "500 "},
      {"CDUP", "500 "},
      {"XPWD", "500 "},
      {"MDTM a.txt", "500 "},
      {"APPE a.txt", "500 "},
      {"EPSV", "500 "},
      {"nonsense here", "500 "},
      {"QUIT", "221 再见"},
      {"NOOP", "200 "},  // the control connection is still there
  };
  for (const auto& [line, reply] : cases) EXPECT_EQ(client.Ask(line), reply + "\r\n") << line;
}

TEST_F(FtpCommandsTest, AnArrivalWithoutACommandWordIsNotAnswered) {
  FtpClient client = Connect();
  for (const char* bytes : {"\r\n", "NOOP",
                            "\xFF\xF4\xFF\xF2"
                            "ABOR\r\n",
                            "CWD a", " \r\nabcdef"}) {
    client.TellRaw(bytes);
    EXPECT_TRUE(client.HearsNothing()) << bytes;
  }
  OnLoop([&] { EXPECT_TRUE(TheServer().State().abortRequested); });
  EXPECT_EQ(client.Ask("NOOP"), "200 \r\n");
}

TEST_F(FtpCommandsTest, TwoCommandsInOneArrivalAreOneUnknownCommand) {
  FtpClient client = Connect();
  client.TellRaw("NOOP\r\nLIST -a\r\n");
  EXPECT_EQ(client.Reply(), "500 \r\n");
  EXPECT_TRUE(client.HearsNothing());
}

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

TEST_F(FtpCommandsTest, WalksFoldersThatNeedNotExist) {
  FtpClient client = Connect();
  const std::vector<std::tuple<std::string, std::string>> walk = {
      {"CWD", ""},  // a bare one changes nothing
      {"CWD /", "/"},
      {"CWD pub", "/pub/"},
      {"CWD deep/er", "/pub/deep/er/"},
      {"CWD /missing", "/missing/"},
      {"CWD ..", "/missing/../"},
      {"CWD", "/missing/../"},
      {"CWD /", "/"},
  };
  for (const auto& [line, directory] : walk) {
    EXPECT_EQ(client.Ask(line), "250 CWD command success.\r\n") << line;
    if (directory.empty()) continue;
    EXPECT_EQ(client.Ask("PWD"), "257 \"" + directory + "\" command successful. \r\n") << line;
  }
}

TEST_F(FtpCommandsTest, AFreshCwdIsRelativeToTheRootOfTheDrive) {
  FtpClient client = Connect();
  client.Ask("CWD pub");
  EXPECT_EQ(client.Ask("PWD"), "257 \"/pub/\" command successful. \r\n");
  EXPECT_EQ(client.Ask("MKD x"), "550 此文件夹为只读文件夹.\r\n");
  client.Ask("CWD /up");
  EXPECT_EQ(client.Ask("MKD x"), "257 " + UploadDir() + "已经创建\r\n");
}

TEST_F(FtpCommandsTest, CwdGivesTheRootItsSeparatorForEveryone) {
  FtpClient one = Connect();
  FtpClient two = Connect();
  Put("a.txt", "x");
  two.Ask("PWD");
  one.Ask("CWD /");
  OnLoop([&] {
    EXPECT_EQ(TheServer().State().ftpRoot, Root() + "\\");
    EXPECT_EQ(TheServer().Options().ftpRoot, Root());  // which settings are written from
  });
  // The directory that the other has from before no longer equals the root, so nothing sets what it
  // sees; a name from the root now has a doubled separator, which the file system forgives.
  EXPECT_EQ(two.Ask("PWD"), "257 \"/\" command successful. \r\n");
  EXPECT_EQ(two.Fetch("RETR /a.txt").bytes, "x");
  // The upload rule does not forgive it: it compares texts.
  Put("up/a.txt", "x");
  EXPECT_TRUE(two.Ask("DELE /up/a.txt").starts_with("550"));
  EXPECT_EQ(two.Ask("DELE up\\a.txt"), "250 文件已删除.\r\n");
}

TEST_F(FtpCommandsTest, AClosedConnectionTakesItsDirectoriesWithIt) {
  {
    FtpClient client = Connect();  // slot 1
    client.Ask("CWD /up");
    client.Ask("RNFR a.txt");
  }
  for (int slot = 2; slot <= 19; ++slot) Connect();
  FtpClient client = Connect();  // slot 1 again
  Put("up/a.txt", "x");
  EXPECT_EQ(client.Ask("PWD"), "257 \"/\" command successful. \r\n");
  EXPECT_EQ(client.Ask("RNTO up\\b.txt"), "502 \r\n");
}

TEST_F(FtpCommandsTest, ABusySlotIsClosedWithoutAByte) {
  FtpClient first = Connect();
  for (int slot = 2; slot <= 19; ++slot) Connect();
  Client refused(Port());
  EXPECT_TRUE(refused.SeesEnd());
  EXPECT_EQ(first.Ask("NOOP"), "200 \r\n");
  EXPECT_EQ(Connect().Ask("NOOP"), "200 \r\n");
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
