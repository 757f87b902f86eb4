#include "files/logs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <iomanip>
#include <sstream>

namespace {

TEST(ErrorLogLine, HoldsTheLocalTimeWithLeadingZeros) {
  std::tm local = {};
  std::istringstream("2026-01-05 09:04:03") >> std::get_time(&local, "%Y-%m-%d %H:%M:%S");
  const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
  EXPECT_EQ(files::ErrorLog::Line("x", time), "在 2026-01-05 09:04:03捕获错误: x");
}

TEST(ErrorLogLine, ShowsOnOneLineWhatIsNotPrintable) {
  const std::string many(4095, 'a');
  const std::pair<std::string, std::string> cases[] = {
      {"a\r\nb\x1b[2J\tc", "a??b?[2J?c"},
      {"\xC2\x9B|\xE2\x80\xAE|\xE2\x80\xA8|中文|\xFF", "?|?|?|中文|\xFF"},
      {"its own line end\r\n", "its own line end\r\n"},
      {many + "中文", many + "…"}};
  for (const auto& [message, shown] : cases) {
    EXPECT_THAT(files::ErrorLog::Line(message, {}), testing::EndsWith("捕获错误: " + shown));
  }
}

}  // namespace
