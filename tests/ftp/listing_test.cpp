#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>

#include "ftp/file_info.h"
#include "ftp/folder_walk.h"
#include "ftp/listing_lines.h"
#include "net/handler_scope.h"
#include "tests/support/server_fixture.h"

namespace ModFtp {
namespace {

std::chrono::system_clock::time_point LocalDay(int year, int month, int day) {
  std::tm date = {};
  date.tm_year = year - 1900;
  date.tm_mon = month - 1;
  date.tm_mday = day;
  date.tm_hour = 12;
  date.tm_isdst = -1;
  return std::chrono::system_clock::from_time_t(std::mktime(&date));
}

TEST(ListingLine, ShowsEveryEntryAsReadOnlyWithThreeBlanksBeforeItsSize) {
  EXPECT_EQ(ListingLine("index.htm", false, {LocalDay(2009, 3, 5), 1234}),
            "-r-xr-xr-x  1 owner group   1234 Mar 05 2009 index.htm\r\n");
  EXPECT_EQ(ListingLine("a\r\nb", false, {LocalDay(2009, 3, 5), 1}),
            "-r-xr-xr-x  1 owner group   1 Mar 05 2009 a??b\r\n");
  EXPECT_EQ(ListingLine("my pages", true, {LocalDay(2026, 12, 31), 0}),
            "dr-xr-xr-x  1 owner group   0 Dec 31 2026 my pages\r\n");
  EXPECT_EQ(ListingLine("\u4E2D.txt", false, {LocalDay(1999, 1, 10), 2147483647}),
            "-r-xr-xr-x  1 owner group   2147483647 Jan 10 1999 \u4E2D.txt\r\n");
}

TEST(ListingLine, OnlyAfterACwdAreNamesWithoutADotLeftOut) {
  EXPECT_TRUE(IsListed("readme", "USER"));
  EXPECT_TRUE(IsListed("readme.txt", "CWD"));
  EXPECT_FALSE(IsListed("readme", "CWD"));
}

std::vector<std::string> Names(SortedEntries entries) {
  std::vector<std::string> names;
  while (const auto entry = entries.Next()) names.push_back(entry->name);
  return names;
}

TEST(SortedEntries, AreSortedByUpperCasedNamesAcrossBatches) {
  SortedEntries entries;
  entries.Add({{"b.txt"}, {"a_1"}, {"Z"}});
  entries.Add({});
  entries.Add({{"A1"}, {"c"}});
  entries.Add({{"B"}});
  EXPECT_EQ(Names(std::move(entries)),
            (std::vector<std::string>{"A1", "a_1", "B", "b.txt", "c", "Z"}));
  EXPECT_TRUE(Names(SortedEntries()).empty());
}

class FolderInfoTest : public test::ProgramFixture {
 protected:
  // The folder's size; -1 if it cannot be told.
  std::int64_t SizeOf(std::string_view folder) {
    const std::string path = Home().Text(folder);
    bool done = false;
    std::int64_t size = -1;
    const auto scope =
        std::make_shared<net::HandlerScope>(Environment().loop, [](const std::string&) {});
    OnLoop([&] { scope->Start(Inspect(path, done, size)); });
    EXPECT_TRUE(Eventually([&] { return done; }));
    return size;
  }

 private:
  static net::Task<> Inspect(std::string path, bool& done, std::int64_t& size) {
    MemoryBudget budget(1U << 20);
    const auto memory = std::make_shared<MemoryShare>(budget);
    net::Task<std::optional<FileInfo>> inspecting = GetFolderInfo(path, false, memory);
    const std::optional<FileInfo> info = co_await inspecting;
    if (info) size = info->size;
    done = true;
  }
};

TEST_F(FolderInfoTest, CountsEverythingBelowIncludingHiddenFilesButFollowsNoLinks) {
  Home().Write("d/one.txt", "12345");
  Home().Write("d/.hidden", "123");
  Home().Write("d/deep/deeper/two.txt", "12");
  std::filesystem::create_directories(Home().Path("d/empty"));
  EXPECT_EQ(SizeOf("d"), 10);
  EXPECT_EQ(SizeOf("d\\empty"), 0);
  std::error_code error;
  std::filesystem::create_directory_symlink(Home().Path("d"), Home().Path("d/loop"), error);
  if (error) GTEST_SKIP() << "no links here: " << error.message();
  std::filesystem::create_symlink(Home().Path("d/one.txt"), Home().Path("d/link"));
  EXPECT_EQ(SizeOf("d"), 10);
}

TEST_F(FolderInfoTest, FailsBeyondSignedThirtyTwoBitsAndForWhatIsNotAFolder) {
  Home().Write("file", "x");
  EXPECT_EQ(SizeOf("file"), -1);
  EXPECT_EQ(SizeOf("missing"), -1);
  for (const char* name : {"d/a", "d/b"}) {
    Home().Write(name, "x");
    std::error_code error;
    std::filesystem::resize_file(Home().Path(name), 1U << 30, error);
    if (error) GTEST_SKIP() << "no sparse files here: " << error.message();
  }
  EXPECT_EQ(SizeOf("d"), -1);
  std::filesystem::resize_file(Home().Path("d/b"), (1U << 30) - 1);
  EXPECT_EQ(SizeOf("d"), 2147483647);
  std::filesystem::resize_file(Home().Path("d/b"), std::uintmax_t{1} << 31);
  EXPECT_FALSE(GetFileInfo(Home().Text("d\\b")));
}

}  // namespace
}  // namespace ModFtp
