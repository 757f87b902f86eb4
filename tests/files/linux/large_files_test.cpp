#include "files/files.h"

#include "tests/support/open_files.h"
#include "tests/support/server_fixture.h"

namespace {

using platform::File;
namespace fs = std::filesystem;

class LargeFiles : public test::ProgramFixture {
 protected:
  // Takes no space.
  std::string Make(const std::string& name, std::uintmax_t size = 9 << 20) {
    Home().Write(name, "old");
    fs::resize_file(Home().Path(name), size);
    return Home().Text(name);
  }
  std::error_code error;
};

TEST_F(LargeFiles, AreGoneAtOnceAndLeaveNothingOpenHoweverManyAreRemoved) {
  constexpr int kMany = 40;
  for (int i = 0; i < kMany; ++i) {
    const std::string name = Make("large" + std::to_string(i));
    EXPECT_FALSE(files::RemoveFile(name));
    EXPECT_FALSE(ModCommon::FileExists(name));
  }
  EXPECT_TRUE(Eventually([this] { return !test::HasOpenFileIn(Home().Native()); }));
  EXPECT_TRUE(fs::is_empty(Home().Native()));
}

TEST_F(LargeFiles, ServeThoseWhoHaveThemOpenOrByAnotherName) {
  const std::string name = Make("large");
  fs::create_hard_link(Home().Path("large"), Home().Path("other"));
  EXPECT_FALSE(files::RemoveFile(name));
  EXPECT_EQ(Home().Read("other").substr(0, 3), "old");
  File reader = files::OpenFile(Home().Text("other"), File::Mode::kRead, error);
  File writer = files::OpenFile(Make("written", 0), File::Mode::kAppend, error);
  writer.Write(std::string(9 << 20, 'x'), error);
  EXPECT_FALSE(files::RemoveFile(Home().Text("other")) ||
               files::RemoveFile(Home().Text("written")));
  std::string start(3, ' ');
  EXPECT_EQ(reader.Read(start.data(), start.size(), error), 3U);
  EXPECT_EQ(start, "old");
  reader.Close();
  writer.Close();
  EXPECT_TRUE(Eventually([this] { return !test::HasOpenFileIn(Home().Native()); }));
}

}  // namespace
