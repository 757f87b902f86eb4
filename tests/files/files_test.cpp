#include "files/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "tests/support/temporary_folder.h"

namespace {

using ModCommon::FileExists;
using platform::File;

class Files : public testing::Test {
 protected:
  test::TemporaryFolder folder_;
  std::error_code error_;
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
  EXPECT_EQ(files::ReadFile(folder_.Text("dIR\\seite.htm")), "upper");
  folder_.Write("Dir/seite2.htm", "x");
  EXPECT_TRUE(FileExists(folder_.Text("DIR\\SEITE2.HTM")));
  EXPECT_FALSE(FileExists(folder_.Text("DIR\\SEITE3.HTM")));
  folder_.Write("Dir/SEITE3.htm", "late");
  EXPECT_TRUE(FileExists(folder_.Text("DIR\\SEITE3.HTM")));
}

TEST_F(Files, ANameWithANulOrLongerThanAnyPathNamesNothing) {
  folder_.Write("kept.txt", "kept");
  const std::string kept = folder_.Text("kept.txt");
  std::string deep = folder_.Text("d");
  while (deep.size() < 600'000) deep += "\\d";
  for (const std::string& name : {kept + '\0', kept + std::string("\0.txt", 5), deep}) {
    std::error_code error;
    for (const auto mode : {File::Mode::kRead, File::Mode::kAppend, File::Mode::kReplace}) {
      EXPECT_FALSE(files::OpenFile(name, mode, error).IsOpen());
    }
    files::InspectPath(name, error);
    EXPECT_TRUE(error);
    EXPECT_TRUE(files::RemoveFile(name));
    EXPECT_TRUE(files::ReplaceContent(name, "other"));
    EXPECT_TRUE(files::RenamePath(name, folder_.Text("moved")));
    EXPECT_TRUE(files::RenamePath(kept, name));
    EXPECT_TRUE(files::CreateFolder(name));
    EXPECT_FALSE(files::FolderExists(name) || ModCommon::FileExists(name));
    files::ReadFolder(name, error);
    EXPECT_TRUE(error);
  }
  EXPECT_EQ(folder_.Read("kept.txt"), "kept");
  EXPECT_EQ(files::ListFolder(folder_.Text(), error_).size(), 1U);
}

TEST_F(Files, ALongWayThroughFoldersOfAnotherCaseLeadsToTheFile) {
  folder_.Write("Folder/File.txt", "found");
  std::string way;
  while (way.size() < 3000) way += "FOLDER\\..\\";
  EXPECT_EQ(files::ReadFile(folder_.Text(way + "folder\\FILE.TXT")), "found");
}

// More entries than are read anew at every change.
TEST_F(Files, ANameInALargeFolderIsFoundSoonAfterItCame) {
  for (int i = 0; i < 1500; ++i) folder_.Write("n" + std::to_string(i), "");
  EXPECT_FALSE(ModCommon::FileExists(folder_.Text("LATE")));
  folder_.Write("Late", "");
  bool found = false;
  for (int i = 0; i < 500 && !found; ++i) {
    found = ModCommon::FileExists(folder_.Text("LATE"));
    if (!found) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_TRUE(found);
  EXPECT_TRUE(ModCommon::FileExists(folder_.Text("N1499")));
}

TEST_F(Files, ANewFileGetsItsNameAsWrittenInTheFolderThatIsFound) {
  folder_.Write("User/bob/x", "");
  EXPECT_FALSE(files::AppendToFile(folder_.Text("user\\BOB\\Neu.eml"), "1"));
  EXPECT_FALSE(files::AppendToFile(folder_.Text("user\\BOB\\NEU.EML"), "2"));
  EXPECT_EQ(folder_.Read("User/bob/Neu.eml"), "12");
}

TEST_F(Files, RenamingFailsOntoAnotherFileButMayChangeTheCase) {
  folder_.Write("a", "A");
  folder_.Write("b", "B");
  EXPECT_TRUE(files::RenamePath(folder_.Text("a"), folder_.Text("b")));
  EXPECT_EQ(folder_.Read("b"), "B");
  EXPECT_FALSE(files::RenamePath(folder_.Text("a"), folder_.Text("A")));
  std::error_code error;
  const auto entries = files::ListFolder(folder_.Text(), error);
  ASSERT_EQ(entries.size(), 2U);
  // Wine says yes to a change of case alone and leaves the name as it is.
  const bool windows = std::filesystem::path::preferred_separator == '\\';
  EXPECT_EQ(entries[0].name, windows ? "a" : "A");
}

TEST_F(Files, AListIsOrderedByUpperCasedName) {
  for (const char* name : {"b", "A", "_", "c", "B1", "äb", "Z"}) folder_.Write(name, "");
  std::error_code error;
  std::vector<std::string> names;
  for (const auto& entry : files::ListFolder(folder_.Text(), error)) names.push_back(entry.name);
  EXPECT_THAT(names, testing::ElementsAre("A", "b", "B1", "c", "Z", "_", "äb"));
  EXPECT_TRUE(files::ListFolder(folder_.Text("missing"), error).empty());
  EXPECT_TRUE(error);
}

TEST_F(Files, ReplacingLeavesNoOtherFileBehind) {
  folder_.Write("f", "old and longer");
  EXPECT_FALSE(files::ReplaceContent(folder_.Text("F"), "new"));
  EXPECT_EQ(folder_.Read("f"), "new");
  std::error_code error;
  EXPECT_EQ(files::ListFolder(folder_.Text(), error).size(), 1U);
}

}  // namespace
