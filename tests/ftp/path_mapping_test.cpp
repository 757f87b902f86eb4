#include "ftp/path_mapping.h"

#include <gtest/gtest.h>

namespace ModFtp {
namespace {

TEST(PathMapping, CwdJoinsTextsWithoutLookingAtTheDisk) {
  const struct {
    const char *root, *from, *argument, *physical, *seen;
  } cases[] = {
      {"C:\\ftp\\", "C:\\ftp\\", "pub", "C:\\ftp\\pub", "/pub/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "", "C:\\ftp\\", "/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "/a/b/", R"(C:\ftp\a\b\)", "/a/b/"},
      // Without a directory, the root of the drive is meant.
      {"C:\\ftp\\", "", "pub", "\\pub", "/pub/"},
      // The root's text is replaced wherever it is found, in its own case only.
      {"\\d\\", "\\d\\", "x/d/y", R"(\d\x\d\y)", "/x/y/"},
      {"C:\\FTP\\", "c:\\ftp", "a", "c:\\ftp\\a", "c:/ftp/a/"},
  };
  for (const auto& one : cases) {
    const CurrentDirectory changed = ChangedDirectory(one.root, one.from, one.argument);
    EXPECT_EQ(changed.physicalDir, one.physical) << one.argument;
    EXPECT_EQ(changed.ftpDir, one.seen) << one.argument;
  }
}

TEST(PathMapping, TheUploadRuleSearchesTextAnywhereInAnyCaseButNotItself) {
  const struct {
    const char* path;
    bool isInside;
  } cases[] = {
      {"C:\\upä\\x", true},   {"c:\\UPÄ\\x", true},     {"C:\\upä", false},
      {"c:\\UPÄ", false},     {"C:\\upä\\", true},      {"C:\\upä2\\x", true},
      {"C:\\x", false},       {"D:\\C:\\upä\\x", true}, {"C:\\upä\\..\\x", true},
      {"C:\\/upä\\x", false}, {"C:\\\\upä\\x", false},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(IsInsideUploadDir(one.path, "C:\\upä"), one.isInside) << one.path;
  }
  EXPECT_TRUE(IsInsideUploadDir("C:\\x", ""));
}

}  // namespace
}  // namespace ModFtp
