#include "text/line_breaks.h"

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

TEST(LineBreaks, ChineseBreaksAnywhereButAtSignsAndWordsStayWhole) {
  // A Chinese character is three bytes, and a line has room for four.
  const auto fits = [](const std::string& line) { return line.size() <= 12; };
  const std::pair<const char*, Lines> cases[] = {
      {"", {}},
      {"一二三四五六", {"一二三四", "五六"}},
      {"一二三四。五", {"一二三", "四。五"}},
      {"一二三（四）", {"一二三", "（四）"}},
      {"in one folder 一二", {"in one", "folder 一", "二"}},
      {"index.htm，一二", {"index.htm，", "一二"}},
      {"http://localhost/ a", {"http://local", "host/ a"}}};
  for (const auto& [text, lines] : cases) EXPECT_EQ(text::BrokenIntoLines(text, fits), lines);
  EXPECT_EQ(text::BrokenIntoLines("一x", [](const std::string&) { return false; }),
            (Lines{"一", "x"}));
}

}  // namespace
