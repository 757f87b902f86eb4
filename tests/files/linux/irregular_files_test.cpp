// What has a file's name and is none, and what a file is besides its content.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "files/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using platform::File;
namespace fs = std::filesystem;

TEST(IrregularFiles, AreNeverOpenedAndHoldUpNobody) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", folder.Path("endless"));
  fs::create_symlink("fifo", folder.Path("link"));
  for (const char* name : {"fifo", "endless", "link"}) {
    const std::string path = folder.Text(name);
    for (const auto mode :
         {File::Mode::kRead, File::Mode::kAppend, File::Mode::kUpdate, File::Mode::kReplace}) {
      std::error_code error;
      EXPECT_FALSE(files::OpenFile(path, mode, error).IsOpen()) << name;
      EXPECT_TRUE(error) << name;
    }
    EXPECT_FALSE(ModCommon::FileExists(path));
    EXPECT_FALSE(files::ReadFile(path));
  }
}

TEST(ReplacedFiles, KeepTheirPermissionsAndTheLinksThatLeadToThem) {
  const test::TemporaryFolder folder;
  folder.Write("file", "old and longer");
  fs::permissions(folder.Path("file"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("file", folder.Path("Link"));
  EXPECT_FALSE(files::ReplaceContent(folder.Text("LINK"), "new"));
  EXPECT_TRUE(fs::is_symlink(folder.Path("Link")));
  EXPECT_EQ(folder.Read("file"), "new");
  EXPECT_EQ(fs::status(folder.Path("file")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Native()), {}), 2);
}

}  // namespace
