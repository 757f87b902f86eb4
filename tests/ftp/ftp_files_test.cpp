// Commands that change files, and the rule that keeps them to the upload directory.

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

class FtpFilesTest : public FtpServerTest {
 protected:
  // A client in the root.
  FtpClient InRoot() {
    FtpClient client = Connect();
    client.Ask("PWD");
    return client;
  }
  FtpClient InUpload() {
    FtpClient client = Connect();
    client.Ask("CWD /up");
    return client;
  }
};

constexpr const char* kMkdFailed = "550 此文件夹为只读文件夹.\r\n";
constexpr const char* kRmdDone = "250 文件夹已经删除.\r\n";
constexpr const char* kRmdFailed = "550 请求文件操作无法执行（无访问权）.\r\n";
constexpr const char* kDeleDone = "250 文件已删除.\r\n";
constexpr const char* kDeleFailed = "550 请求文件操作无法执行.";

TEST_F(FtpFilesTest, MkdNamesTheCurrentDirectory) {
  FtpClient client = InUpload();
  EXPECT_EQ(client.Ask("MKD new"), "257 " + UploadDir() + "已经创建\r\n");
  EXPECT_TRUE(Has("up/new"));
  EXPECT_EQ(client.Ask("MKD new"), kMkdFailed);
  EXPECT_EQ(client.Ask("MKD a\\b"), kMkdFailed);  // one folder, not a chain of them
  EXPECT_EQ(client.Ask("MKD"), kMkdFailed);
  EXPECT_EQ(client.Ask("MKD /rooted"), "257 " + UploadDir() + "已经创建\r\n");
  EXPECT_TRUE(Has("up/rooted"));  // "/" means nothing special to it
}

TEST_F(FtpFilesTest, TheUploadDirectoryItselfIsNeverTouched) {
  FtpClient client = InRoot();
  EXPECT_EQ(client.Ask("MKD up"), kMkdFailed);
  EXPECT_EQ(client.Ask("RMD up"), kRmdFailed);
  EXPECT_EQ(client.Ask("RNFR up"), "550 无访问权\r\n");
  EXPECT_EQ(client.Ask("MKD other"), kMkdFailed);
  EXPECT_EQ(client.Ask("MKD up2"), "257 " + Root() + "已经创建\r\n");  // begins like it
  EXPECT_TRUE(Has("up2"));
}

TEST_F(FtpFilesTest, RmdSucceedsForAMissingFolderAndFailsForAFullOne) {
  FtpClient client = InRoot();
  Put("up/full/a.txt", "x");
  Home().Write("ftproot/outside/x", "x");
  EXPECT_EQ(client.Ask("RMD up\\missing"), kRmdDone);
  EXPECT_EQ(client.Ask("RMD up\\full"), kRmdFailed);
  EXPECT_TRUE(Has("up/full/a.txt"));
  EXPECT_EQ(client.Ask("RMD outside"), kRmdFailed);
  EXPECT_EQ(client.Ask("RMD missing"), kRmdFailed);
  EXPECT_EQ(client.Ask("DELE /up/full/a.txt"), kDeleDone);
  EXPECT_EQ(client.Ask("RMD /up/full"), kRmdDone);
  EXPECT_FALSE(Has("up/full"));
}

TEST_F(FtpFilesTest, DeleRefusesWithoutAReasonAndFailsWithOne) {
  FtpClient client = InRoot();
  Put("x.txt", "x");
  EXPECT_EQ(client.Ask("DELE x.txt"), std::string(kDeleFailed) + "\r\n");
  EXPECT_EQ(client.Ask("DELE /x.txt"), std::string(kDeleFailed) + "\r\n");
  EXPECT_TRUE(Has("x.txt"));
  for (const char* line : {"DELE up\\missing.txt", "DELE up\\*.none", "DELE up\\"}) {
    const std::string reply = client.Ask(line);
    EXPECT_TRUE(reply.starts_with(kDeleFailed)) << reply;
    EXPECT_GT(reply.size(), std::string(kDeleFailed).size() + 2) << line;
    EXPECT_NE(reply[std::string(kDeleFailed).size()], ' ') << line;
  }
}

TEST_F(FtpFilesTest, DeleTakesWildcardsInTheName) {
  FtpClient client = InUpload();
  for (const char* name : {"a.txt", "B.TXT", "\u4E2D.txt", "ab.txt", "readme", "a.htm"}) {
    Put(std::string("up/") + name, "x");
  }
  std::filesystem::create_directories(Home().Path("ftproot/up/folder.txt"));
  EXPECT_EQ(client.Ask("DELE ?.txt"), kDeleDone);  // one character, of however many bytes
  EXPECT_FALSE(Has("up/a.txt") || Has("up/B.TXT") || Has("up/\u4E2D.txt"));
  EXPECT_TRUE(Has("up/ab.txt") && Has("up/readme") && Has("up/a.htm"));
  EXPECT_EQ(client.Ask("DELE *.*"), kDeleDone);
  EXPECT_FALSE(Has("up/ab.txt") || Has("up/readme") || Has("up/a.htm"));
  EXPECT_TRUE(Has("up/folder.txt"));
}

TEST_F(FtpFilesTest, RenamesWithinTheUploadDirectoryAndNeverOverSomething) {
  FtpClient client = InUpload();
  Put("up/a.txt", "a");
  Put("up/b.txt", "b");
  EXPECT_EQ(client.Ask("RNFR a.txt"), "350 \r\n");
  EXPECT_EQ(client.Ask("RNTO b.txt"), "502 \r\n");
  EXPECT_EQ(File("up/b.txt"), "b");
  EXPECT_EQ(client.Ask("RNTO A.TXT"), "250 \r\n");  // only the case changes
  EXPECT_EQ(client.Ask("RNTO c.txt"), "250 \r\n");  // the source is kept, and found in any case
  EXPECT_EQ(File("up/c.txt"), "a");
  EXPECT_EQ(client.Ask("RNTO d.txt"), "502 \r\n");  // gone
  EXPECT_EQ(client.Ask("RNFR missing"), "350 \r\n");
  EXPECT_EQ(client.Ask("RNTO e.txt"), "502 \r\n");
}

TEST_F(FtpFilesTest, ARefusedRnfrCanStillBeMovedIn) {
  FtpClient client = InRoot();
  Put("outside.txt", "x");
  EXPECT_EQ(client.Ask("RNFR /outside.txt"), "550 无访问权\r\n");
  EXPECT_EQ(client.Ask("RNTO /moved.txt"), "502 \r\n");
  EXPECT_EQ(client.Ask("RNTO /up/moved.txt"), "250 \r\n");
  EXPECT_EQ(File("up/moved.txt"), "x");
}

TEST_F(FtpFilesTest, AnEmptyUploadDirectoryLetsEveryPathPass) {
  StopServer();
  WriteSettings("0", "");
  ASSERT_TRUE(StartServer());
  FtpClient client = InRoot();
  EXPECT_EQ(client.Ask("MKD anywhere"), "257 " + Root() + "已经创建\r\n");
  Put("x.txt", "x");
  EXPECT_EQ(client.Ask("DELE /x.txt"), kDeleDone);
}

}  // namespace
}  // namespace test
