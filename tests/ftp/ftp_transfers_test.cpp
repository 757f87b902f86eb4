// Listings, downloads and uploads.

#include <algorithm>
#include <filesystem>

#include "platform/directory.h"
#include "tests/ftp/ftp_fixture.h"
#include "text/wildcards.h"

namespace test {
namespace {

using FtpTransfersTest = FtpServerTest;

TEST_F(FtpTransfersTest, RetrievesFilesOfEveryLengthWhole) {
  FtpClient client = Connect();
  client.Ask("PWD");
  for (const std::size_t size : {0, 1, 4095, 4096, 4097, 8192, 8193, 3000000}) {
    const std::string content = Content(size);
    Put("file.bin", content);
    const Transferred transferred = client.Fetch("RETR file.bin");
    EXPECT_EQ(transferred.before, kSending);
    EXPECT_TRUE(transferred.bytes == content) << size << ": " << transferred.bytes.size();
    EXPECT_EQ(transferred.after, "226 \r\n");
  }
}

TEST_F(FtpTransfersTest, AMissingFileGetsItsDataConnectionClosed) {
  FtpClient client = Connect();
  for (const char* line : {"RETR /missing", "RETR /up", "RETR"}) {
    const Transferred transferred = client.Fetch(line);
    EXPECT_EQ(transferred.before, kSending) << line;
    EXPECT_EQ(transferred.bytes, "") << line;
    EXPECT_EQ(transferred.after, "426 \r\n") << line;
  }
}

TEST_F(FtpTransfersTest, ListsVisibleEntriesInOrder) {
  Put("b.txt", "12345");
  Put("A.txt", "");
  Put("up/inner/c.txt", "123");
  Put("up/d.txt", "1234");
  FtpClient client = Connect();
  client.Ask("PWD");
  const Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_TRUE(text::MatchesWildcard(listed.bytes,
                                    "-r-xr-xr-x  1 owner group   0 ??? ?? ???? A.txt\r\n"
                                    "-r-xr-xr-x  1 owner group   5 ??? ?? ???? b.txt\r\n"
                                    "dr-xr-xr-x  1 owner group   7 ??? ?? ???? up\r\n"))
      << listed.bytes;
  EXPECT_EQ(listed.after, kListed);
  // What follows the word is not looked at.
  EXPECT_EQ(client.Fetch("LIST -la up").bytes, listed.bytes);
}

TEST_F(FtpTransfersTest, HiddenEntriesAreLeftOut) {
  Put(".hidden", "x");
  Put("shown", "x");
  std::error_code error;
  if (!platform::ListDirectory(Home().Path("ftproot"), error).front().isHidden) {
    GTEST_SKIP() << "a dot hides nothing here";
  }
  FtpClient client = Connect();
  client.Ask("PWD");
  const std::string listed = client.Fetch("LIST").bytes;
  EXPECT_THAT(listed, testing::HasSubstr(" shown\r\n"));
  EXPECT_THAT(listed, testing::Not(testing::HasSubstr("hidden")));
}

TEST_F(FtpTransfersTest, AnEmptyFolderIsListedAndAMissingOneFails) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, kListed);
  client.Ask("CWD /missing");
  listed = client.Fetch("LIST");
  EXPECT_EQ(listed.before, kSending);
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, "451 \r\n");
}

TEST_F(FtpTransfersTest, OneEntryThatCannotBeLookedAtSpoilsTheListing) {
  Put("a.txt", "x");
  std::error_code error;
  std::filesystem::create_symlink("nowhere", Home().Path("ftproot/b.txt"), error);
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  FtpClient client = Connect();
  client.Ask("PWD");
  const Transferred listed = client.Fetch("LIST");
  EXPECT_EQ(listed.bytes, "");
  EXPECT_EQ(listed.after, "451 \r\n");
}

TEST_F(FtpTransfersTest, WithoutADirectoryTheRootOfTheDriveIsMeant) {
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

TEST_F(FtpTransfersTest, StoresWhatComesUpToTheEndOfTheDataConnection) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  const std::string content = Content(3000000);
  const Transferred stored = client.Store("new.bin", content);
  EXPECT_EQ(stored.before, kReceiving);
  EXPECT_EQ(stored.after, kStored);
  EXPECT_TRUE(File("up/new.bin") == content);
}

TEST_F(FtpTransfersTest, AnUploadIsWrittenOverTheOldFileAndLeavesItsTail) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  Put("up/Old.txt", "0123456789");
  EXPECT_EQ(client.Store("Old.txt", "abc").after, kStored);
  EXPECT_EQ(File("up/Old.txt"), "abc3456789");
  EXPECT_EQ(client.Store("OLD.TXT", "x").after, kStored);  // the same file in any case
  EXPECT_EQ(File("up/Old.txt"), "xbc3456789");
  EXPECT_EQ(client.Store("Old.txt", "").after, kStored);
  EXPECT_EQ(File("up/Old.txt"), "xbc3456789");
  EXPECT_EQ(client.Store("nothing.txt", "").after, kStored);
  EXPECT_FALSE(Has("up/nothing.txt"));
}

TEST_F(FtpTransfersTest, ARefusedUploadWaitsForItsDataConnectionAndWritesNothing) {
  FtpClient client = Connect();
  client.Ask("PWD");
  const std::string reply = client.Ask("PASV");
  client.Tell("STOR x.txt");
  EXPECT_TRUE(client.HearsNothing());
  Client data(FtpClient::PortOf(reply));
  data.Send("bytes");
  EXPECT_EQ(client.Reply(), kRefused);
  EXPECT_TRUE(data.SeesEnd());
  EXPECT_FALSE(Has("x.txt"));
  // "/" means nothing special: the name is below the current directory.
  EXPECT_EQ(client.Store("/up/x.txt", "bytes").after, kRefused);
  EXPECT_EQ(client.Store("up\\x.txt", "bytes").after, kStored);
}

TEST_F(FtpTransfersTest, BytesSentBeforeTheUploadIsAcceptedAreNotLost) {
  FtpClient client = Connect();
  client.Ask("CWD /up");
  const std::string content = Content(200000);
  const auto data = client.OpenPassive();
  data->Send(content);
  data->Close();
  EXPECT_TRUE(client.HearsNothing());
  EXPECT_EQ(client.Ask("STOR early.bin"), kReceiving);
  EXPECT_EQ(client.Reply(), kStored);
  EXPECT_TRUE(File("up/early.bin") == content);
}

TEST_F(FtpTransfersTest, TheUploadCountIsResetByStorAndSharedByAll) {
  FtpClient one = Connect();
  one.Ask("CWD /up");
  one.Store("a", "12345");
  OnLoop([&] { EXPECT_EQ(TheServer().State().uploadByteCount, 5); });
  FtpClient two = Connect();
  two.Ask("CWD /up");
  two.Store("b", "");
  OnLoop([&] { EXPECT_EQ(TheServer().State().uploadByteCount, 0); });
}

}  // namespace
}  // namespace test
