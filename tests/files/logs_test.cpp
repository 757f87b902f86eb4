#include "files/logs.h"

#include <ctime>

#include "tests/support/server_fixture.h"

namespace {

text::WallTime LocalTime(int year, int month, int day, int hour, int minute, int second) {
  std::tm local = {};
  local.tm_year = year - 1900;
  local.tm_mon = month - 1;
  local.tm_mday = day;
  local.tm_hour = hour;
  local.tm_min = minute;
  local.tm_sec = second;
  local.tm_isdst = -1;
  return std::chrono::system_clock::from_time_t(std::mktime(&local));
}

TEST(ErrorLogLine, HoldsTheTimeWithLeadingZeros) {
  EXPECT_EQ(files::ErrorLog::Line("x", LocalTime(2026, 1, 5, 9, 4, 3)),
            "在 2026-01-05 09:04:03捕获错误: x");
}

class Logs : public test::ProgramFixture {};

TEST_F(Logs, ShowOnOneLineWhatIsNotPrintable) {
  const text::WallTime time = {};
  const auto shown = [&](std::string_view message) {
    const std::string line = files::ErrorLog::Line(message, time);
    return line.substr(line.find(": ") + 2);
  };
  EXPECT_EQ(shown("a\r\nb\x1b[2J\tc"), "a??b?[2J?c");
  EXPECT_EQ(shown("\xC2\x9B|\xE2\x80\xAE|\xE2\x80\xA8|中文|\xFF"), "?|?|?|中文|\xFF");
  EXPECT_EQ(shown("its own line end\r\n"), "its own line end\r\n");
  const std::string cut = shown(std::string(4095, 'a') + "中文");
  EXPECT_EQ(cut, std::string(4095, 'a') + "…");
}

TEST_F(Logs, AppendALineEachAndComeBackAfterDeletion) {
  Program().errors.LogError("one");
  Program().errors.LogError("two");
  EXPECT_THAT(ErrorLog(), testing::ContainsRegex("在 .*: one\r\n在 .*: two\r\n$"));
  std::filesystem::remove(Home().Path("RunErr.Log"));
  Program().errors.LogError("three");
  EXPECT_THAT(ErrorLog(), testing::ContainsRegex("^在 .*: three\r\n$"));
}

TEST_F(Logs, ThatCannotBeWrittenLoseTheirLineSilently) {
  Home().Write("RunErr.Log/inside", "");
  Program().errors.LogError("lost");
  files::ErrorLog(Home().Text("missing")).LogError("lost");
  EXPECT_FALSE(Home().Has("missing"));
}

TEST_F(Logs, ATraceCarriesItsMarkerOnALineOfItsOwn) {
  const std::string file = Home().Text("trace");
  ModCommon::AppendTrace("a", file, false);
  ModCommon::AppendTrace("b", file, true);
  EXPECT_EQ(Home().Read("trace"), "a\r\nb\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@\r\n");
}

}  // namespace
