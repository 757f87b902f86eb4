#include "files/files.h"

#include "tests/support/server_fixture.h"

namespace {

using ModCommon::FileExists;
using platform::File;

class Files : public test::ProgramFixture {
 protected:
  std::string Text(std::string_view name) const { return Home().Text(name); }
  std::error_code error;
};

TEST_F(Files, AreFoundInAnyCaseAndFoldersAreNone) {
  Home().Write("Dir/File.htm", "found");
  for (const char* name : {"Dir\\File.htm", "dIR\\file.HTM", "Dir\\File.htm\\", "Dir//File.htm"}) {
    EXPECT_TRUE(FileExists(Text(name))) << name;
  }
  for (const char* name : {R"(Dir\File.htm\\)", "Dir", "Dir\\", "missing", "Dir\\late.htm"}) {
    EXPECT_FALSE(FileExists(Text(name))) << name;
  }
  EXPECT_FALSE(FileExists(""));
  Home().Write("Dir/LATE.htm", "");
  EXPECT_TRUE(FileExists(Text("DIR\\late.HTM")));
  std::string way;
  while (way.size() < 3000) way += "DIR\\..\\";
  EXPECT_EQ(files::ReadFile(Text(way + "dir\\FILE.HTM")), "found");
}

TEST_F(Files, ANameWithANulOrLongerThanAnyPathNamesNothing) {
  Home().Write("kept.txt", "kept");
  const std::string kept = Text("kept.txt");
  std::string deep = Text("d");
  while (deep.size() < 600'000) deep += "\\d";
  for (const std::string& name : {kept + '\0', kept + std::string("\0.txt", 5), deep}) {
    for (const auto mode : {File::Mode::kRead, File::Mode::kAppend, File::Mode::kReplace}) {
      EXPECT_FALSE(files::OpenFile(name, mode, error).IsOpen());
    }
    EXPECT_TRUE(files::RemoveFile(name) && files::ReplaceContent(name, "other"));
    EXPECT_TRUE(files::RenamePath(name, Text("moved")) && files::RenamePath(kept, name));
    EXPECT_TRUE(files::CreateFolder(name));
    EXPECT_FALSE(files::FolderExists(name) || FileExists(name));
    files::InspectPath(name, error);
    EXPECT_TRUE(error);
    files::ReadFolder(name, error);
    EXPECT_TRUE(error);
  }
  EXPECT_EQ(Home().Read("kept.txt"), "kept");
  EXPECT_EQ(files::ListFolder(Text(""), error).size(), 1U);
}

// More entries than are read anew at every change.
TEST_F(Files, ANameInALargeFolderIsFoundSoonAfterItCame) {
  for (int i = 0; i < 1500; ++i) Home().Write("n" + std::to_string(i), "");
  EXPECT_FALSE(FileExists(Text("LATE")));
  Home().Write("Late", "");
  EXPECT_TRUE(Eventually([this] { return FileExists(Text("LATE")); }));
  EXPECT_TRUE(FileExists(Text("N1499")));
}

TEST_F(Files, ANewFileGetsItsNameAsWrittenInTheFolderThatIsFound) {
  Home().Write("User/bob/x", "");
  EXPECT_FALSE(files::AppendToFile(Text("user\\BOB\\Neu.eml"), "1"));
  EXPECT_FALSE(files::AppendToFile(Text("user\\BOB\\NEU.EML"), "2"));
  EXPECT_EQ(Home().Read("User/bob/Neu.eml"), "12");
}

}  // namespace
