#include "core/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

using ModCommon::FileExists;

class Files : public testing::Test {
 protected:
  test::TemporaryFolder folder_;
};

TEST_F(Files, AFolderAnEmptyNameAndAMissingFileDoNotExist) {
  folder_.Write("dir/file", "x");
  EXPECT_TRUE(FileExists(folder_.Text("dir\\file")));
  EXPECT_TRUE(FileExists(folder_.Text("dir\\file\\")));
  EXPECT_TRUE(FileExists(folder_.Text("dir//file")));
  EXPECT_FALSE(FileExists(folder_.Text("dir\\file\\\\")));
  EXPECT_FALSE(FileExists(folder_.Text("dir")));
  EXPECT_FALSE(FileExists(folder_.Text("dir\\")));
  EXPECT_FALSE(FileExists(folder_.Text("missing")));
  EXPECT_FALSE(FileExists(""));
}

TEST_F(Files, AreFoundWithoutRegardToCaseAndExactlyFirst) {
  folder_.Write("Dir/Seite.HTM", "upper");
  EXPECT_EQ(core::ReadFile(folder_.Text("dIR\\seite.htm")), "upper");
  folder_.Write("Dir/seite2.htm", "x");
  EXPECT_TRUE(FileExists(folder_.Text("DIR\\SEITE2.HTM")));
  EXPECT_FALSE(FileExists(folder_.Text("DIR\\SEITE3.HTM")));
  folder_.Write("Dir/SEITE3.htm", "late");
  EXPECT_TRUE(FileExists(folder_.Text("DIR\\SEITE3.HTM")));
}

TEST_F(Files, ANewFileGetsItsNameAsWrittenInTheFolderThatIsFound) {
  folder_.Write("User/bob/x", "");
  EXPECT_FALSE(core::AppendToFile(folder_.Text("user\\BOB\\Neu.eml"), "1"));
  EXPECT_FALSE(core::AppendToFile(folder_.Text("user\\BOB\\NEU.EML"), "2"));
  EXPECT_EQ(folder_.Read("User/bob/Neu.eml"), "12");
}

TEST_F(Files, RenamingFailsOntoAnotherFileButMayChangeTheCase) {
  folder_.Write("a", "A");
  folder_.Write("b", "B");
  EXPECT_TRUE(core::RenamePath(folder_.Text("a"), folder_.Text("b")));
  EXPECT_EQ(folder_.Read("b"), "B");
  EXPECT_FALSE(core::RenamePath(folder_.Text("a"), folder_.Text("A")));
  std::error_code error;
  const auto entries = core::ListFolder(folder_.Text(), error);
  ASSERT_EQ(entries.size(), 2U);
  // Wine says yes to a change of case alone and leaves the name as it is.
  const bool windows = std::filesystem::path::preferred_separator == '\\';
  EXPECT_EQ(entries[0].name, windows ? "a" : "A");
}

TEST_F(Files, AListIsOrderedByUpperCasedName) {
  for (const char* name : {"b", "A", "_", "c", "B1", "äb", "Z"}) folder_.Write(name, "");
  std::error_code error;
  std::vector<std::string> names;
  for (const auto& entry : core::ListFolder(folder_.Text(), error)) names.push_back(entry.name);
  EXPECT_THAT(names, testing::ElementsAre("A", "b", "B1", "c", "Z", "_", "äb"));
  EXPECT_TRUE(core::ListFolder(folder_.Text("missing"), error).empty());
  EXPECT_TRUE(error);
}

TEST_F(Files, ReplacingLeavesNoOtherFileBehind) {
  folder_.Write("f", "old and longer");
  EXPECT_FALSE(core::ReplaceContent(folder_.Text("F"), "new"));
  EXPECT_EQ(folder_.Read("f"), "new");
  std::error_code error;
  EXPECT_EQ(core::ListFolder(folder_.Text(), error).size(), 1U);
}

}  // namespace
