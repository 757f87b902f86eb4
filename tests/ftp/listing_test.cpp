#include <gtest/gtest.h>

#include <ctime>
#include <iomanip>
#include <sstream>

#include "ftp/folder_walk.h"
#include "ftp/listing_lines.h"

namespace ModFtp {
namespace {

std::chrono::system_clock::time_point LocalNoon(const char* day) {
  std::tm date = {};
  std::istringstream(day) >> std::get_time(&date, "%Y-%m-%d");
  date.tm_hour = 12;
  date.tm_isdst = -1;
  return std::chrono::system_clock::from_time_t(std::mktime(&date));
}

TEST(ListingLine, ShowsEveryEntryAsReadOnlyWithThreeBlanksBeforeItsSize) {
  const struct {
    const char* name;
    bool isFolder;
    const char* day;
    std::int32_t size;
    const char *begin, *end;
  } cases[] = {
      {"index.htm", false, "2009-03-05", 1234, "-r-xr-xr-x", "1234 Mar 05 2009 index.htm"},
      {"a\r\nb", false, "2009-03-05", 1, "-r-xr-xr-x", "1 Mar 05 2009 a??b"},
      {"my pages", true, "2026-12-31", 0, "dr-xr-xr-x", "0 Dec 31 2026 my pages"},
      {"中.txt", false, "1999-01-10", 2147483647, "-r-xr-xr-x", "2147483647 Jan 10 1999 中.txt"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(ListingLine(one.name, one.isFolder, {LocalNoon(one.day), one.size}),
              std::string(one.begin) + "  1 owner group   " + one.end + "\r\n");
  }
}

TEST(ListingLine, OnlyAfterACwdAreNamesWithoutADotLeftOut) {
  EXPECT_TRUE(IsListed("readme", "USER"));
  EXPECT_TRUE(IsListed("readme.txt", "CWD"));
  EXPECT_FALSE(IsListed("readme", "CWD"));
}

TEST(SortedEntries, AreSortedByUpperCasedNamesAcrossBatches) {
  SortedEntries entries;
  entries.Add({{"b.txt"}, {"a_1"}, {"Z"}});
  entries.Add({});
  entries.Add({{"A1"}, {"c"}});
  entries.Add({{"B"}});
  std::string names;
  while (const auto entry = entries.Next()) names += entry->name + " ";
  EXPECT_EQ(names, "A1 a_1 B b.txt c Z ");
}

}  // namespace
}  // namespace ModFtp
