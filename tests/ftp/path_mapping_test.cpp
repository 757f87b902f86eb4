#include "ftp/path_mapping.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace ModFtp {
namespace {

TEST(PathMapping, ChangesTheDirectoryWithoutLookingAtTheDisk) {
  struct Case {
    const char *root, *from, *argument, *physical, *seen;
  };
  const Case cases[] = {
      {"C:\\ftp\\", "C:\\ftp\\", "pub", "C:\\ftp\\pub", "/pub/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "/", "C:\\ftp\\", "/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "", "C:\\ftp\\", "/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "/a/b", "C:\\ftp\\a\\b", "/a/b/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "/a/b/", "C:\\ftp\\a\\b\\", "/a/b/"},
      {"C:\\ftp\\", "C:\\ftp\\pub", "..", "C:\\ftp\\pub\\..", "/pub/../"},
      // A fresh connection is at the root of the drive.
      {"C:\\ftp\\", "", "pub", "\\pub", "/pub/"},
      // The root's text is replaced wherever it stands, and only in its own case.
      {"\\d\\", "\\d\\", "x/d/y", "\\d\\x\\d\\y", "/x/y/"},
      {"C:\\FTP\\", "c:\\ftp", "a", "c:\\ftp\\a", "c:/ftp/a/"},
      {"\\", "\\", "a", "\\a", "/a/"},
  };
  for (const Case& c : cases) {
    const CurrentDirectory changed = ChangedDirectory(c.root, c.from, c.argument);
    EXPECT_EQ(changed.physicalDir, c.physical) << c.argument;
    EXPECT_EQ(changed.ftpDir, c.seen) << c.argument;
  }
}

TEST(UploadRule, SearchesTextAnywhereWithoutRegardToCase) {
  const std::vector<std::tuple<std::string, std::string, bool>> cases = {
      {"C:\\ftp\\up\\new", "C:\\ftp\\up", true},
      {"c:\\FTP\\UP\\new", "C:\\ftp\\up", true},
      {"C:\\ftp\\up", "C:\\ftp\\up", false},
      {"C:\\FTP\\UP", "C:\\ftp\\up", false},
      {"C:\\ftp\\up\\", "C:\\ftp\\up", true},
      {"C:\\ftp\\up2\\x", "C:\\ftp\\up", true},
      {"C:\\ftp\\up\\..\\x", "C:\\ftp\\up", true},
      {"C:\\ftp\\x", "C:\\ftp\\up", false},
      {"D:\\mirror\\C:\\ftp\\up\\x", "C:\\ftp\\up", true},
      {"C:\\ftp\\a/up/x", "C:\\ftp\\a\\up", false},
      {"C:\\ftp\\\\up\\x", "C:\\ftp\\up", false},  // a slashed root and a rooted name
      {"C:\\ftp\\\u00C4\\x", "C:\\ftp\\\u00E4", true},
      {"anything", "", true},
      {"", "", false},
  };
  for (const auto& [path, uploadDir, inside] : cases) {
    EXPECT_EQ(IsInsideUploadDir(path, uploadDir), inside) << path;
  }
}

}  // namespace
}  // namespace ModFtp
