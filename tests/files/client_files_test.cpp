#include "files/client_files.h"

#include <gtest/gtest.h>

#include "tests/support/link.h"
#include "tests/support/temporary_folder.h"

namespace files {
namespace {

using platform::File;

// A root with a file, a folder and links, and beside it what nobody may reach.
class ConfinedTest : public ::testing::Test {
 protected:
  ConfinedTest() {
    for (const char* file : {"root/page.htm", "root/Sub/deep.txt", "out/secret.txt"}) {
      folder_.Write(file, file);
    }
  }

  std::string In(std::string_view name) const { return root_ + std::string(name); }

  std::string Content(std::string_view name) const {
    std::error_code error;
    File file = files_.OpenToRead(In(name), error);
    char buffer[64];
    return file.IsOpen() ? std::string(buffer, file.Read(buffer, sizeof(buffer), error)) : "";
  }

  bool CanList(std::string_view name) const {
    std::error_code error;
    const auto reader = files_.ReadFolder(In(name), error);
    return !error;
  }

  bool CanChange(std::string_view folder) const {
    const std::string place = In(folder);
    std::error_code error;
    const bool written = files_.OpenToUpdate(place + "\\new", error).IsOpen();
    const bool made = !files_.CreateFolder(place + "\\made");
    return written || made || !files_.Rename(In("\\page.htm"), place + "\\moved") ||
           !files_.RemoveFile(place + "\\secret.txt") || !files_.RemoveFolder(place);
  }

  test::TemporaryFolder folder_;
  std::string root_ = folder_.Text("root");
  Confinement confinement_{.isOn = true};
  ClientFiles files_{root_, confinement_};
};

TEST_F(ConfinedTest, NamesAreResolvedBelowTheRoot) {
  for (const char* name :
       {"\\page.htm", "/PAGE.HTM", "\\\\.\\sub\\..\\page.htm", "\\x\\..\\page.htm"}) {
    EXPECT_EQ(Content(name), "root/page.htm") << name;
  }
  EXPECT_EQ(Content("\\sub/DEEP.txt"), "root/Sub/deep.txt");
  EXPECT_TRUE(CanList("") && CanList("\\") && CanList("\\sub"));
  std::error_code error;
  EXPECT_TRUE(files_.OpenToUpdate(In("\\sub\\Mine.txt"), error).IsOpen());
  EXPECT_TRUE(folder_.Has("root/Sub/Mine.txt"));
  EXPECT_FALSE(files_.CreateFolder(In("\\sub\\a")));
  EXPECT_FALSE(files_.Rename(In("\\sub\\mine.txt"), In("\\sub\\a\\..\\A\\Yours")));
  EXPECT_TRUE(folder_.Has("root/Sub/a/Yours"));
  EXPECT_FALSE(files_.RemoveFile(In("\\Sub\\A\\yours")));
  EXPECT_FALSE(files_.RemoveFolder(In("\\Sub\\A")));
  EXPECT_FALSE(folder_.Has("root/Sub/a"));
}

TEST_F(ConfinedTest, NoNameLeadsOut) {
  for (const char* name : {"\\..\\out", "/../out", "\\sub\\..\\..\\out", "\\..\\root\\..\\out",
                           "\\sub/../../out", "\\.. \\out", "\\...\\out", "x\\..\\..\\out"}) {
    const std::string file = std::string(name) + "\\secret.txt";
    EXPECT_EQ(Content(file), "") << name;
    EXPECT_FALSE(files_.FileExists(In(file)) || files_.FolderExists(In(name))) << name;
    EXPECT_FALSE(CanList(name) || CanChange(name)) << name;
  }
  EXPECT_TRUE(files_.Rename(In("\\..\\out\\secret.txt"), In("\\mine")));
  EXPECT_EQ(files_.Settled(In("\\sub\\..\\..\\..\\a/.\\b")), In("\\a\\b"));
  EXPECT_EQ(folder_.Read("out/secret.txt"), "out/secret.txt");
}

TEST_F(ConfinedTest, LinksLeadOutOnlyIfAllowedAndNeverForChanges) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::create_symlink(folder_.Path("out"), folder_.Path("root/absolute"), error);
  if (error && !test::MakeLink("../out", folder_.Path("root/absolute"))) GTEST_SKIP() << "no links";
  test::MakeLink("../../out", folder_.Path("root/Sub/relative"));
  test::MakeLink("../out/secret.txt", folder_.Path("root/file"));
  test::MakeLink("../out/new.txt", folder_.Path("root/dangling"));
  test::MakeLink("Sub", folder_.Path("root/inside"));
  const std::string secret = "out/secret.txt";
  for (const bool followLinks : {false, true}) {
    confinement_.links = followLinks ? platform::Links::kMayLeadOut : platform::Links::kStayInside;
    for (const char* name : {"\\absolute", "\\sub\\relative"}) {
      EXPECT_EQ(Content(std::string(name) + "\\secret.txt"), followLinks ? secret : "") << name;
      EXPECT_EQ(CanList(name), followLinks) << name;
      EXPECT_FALSE(CanChange(name)) << name;
    }
    EXPECT_EQ(Content("\\file"), followLinks ? secret : "");
    EXPECT_EQ(Content("\\inside\\deep.txt"), "root/Sub/deep.txt");
    EXPECT_FALSE(files_.OpenToUpdate(In("\\file"), error).IsOpen());
    EXPECT_FALSE(files_.OpenToUpdate(In("\\dangling"), error).IsOpen());
  }
  EXPECT_EQ(folder_.Read("out/secret.txt"), secret);
  EXPECT_FALSE(folder_.Has("out/new.txt") || folder_.Has("out/new") || folder_.Has("out/made"));
}

}  // namespace
}  // namespace files
