// Listings, downloads and uploads, as far as no conversation shows them.

#include <filesystem>

#include "tests/ftp/ftp_fixture.h"

namespace test {
namespace {

using FtpTransfersTest = FtpServerTest;

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
