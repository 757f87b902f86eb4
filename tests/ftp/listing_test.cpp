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
    const char *name, *day;
    std::int32_t size;
    const char* line;
  } cases[] = {
      {"a.htm", "2009-03-05", 1234, "-r-xr-xr-x  1 owner group   1234 Mar 05 2009 a.htm\r\n"},
      {"a\r\nb", "2009-03-05", 1, "-r-xr-xr-x  1 owner group   1 Mar 05 2009 a??b\r\n"},
      {"my pages", "2026-12-31", 0, "dr-xr-xr-x  1 owner group   0 Dec 31 2026 my pages\r\n"},
  };
  for (const auto& one : cases) {
    const bool isFolder = *one.line == 'd';
    EXPECT_EQ(ListingLine(one.name, isFolder, {LocalNoon(one.day), one.size}), one.line);
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
