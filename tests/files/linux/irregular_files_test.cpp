// What has a file's name and is none.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "files/files.h"
#include "settings/ini_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using platform::File;

TEST(IrregularFiles, AreNeverOpenedAndHoldUpNobody) {
  const test::TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/zero", folder.Path("endless"));
  std::filesystem::create_symlink("fifo", folder.Path("link"));
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
    EXPECT_EQ(ModINIOP::ReadIni(path, "a", "b"), "");
    EXPECT_EQ(ModINIOP::WriteIni(path, "a", "b", "c"), 0);
  }
}

}  // namespace
