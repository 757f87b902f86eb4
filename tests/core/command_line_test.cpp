#include "core/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ModMain::GetCommandLineWords;
using testing::ElementsAre;

TEST(CommandLineWords, AreSplitAtBlankTabAndSlashAlone) {
  EXPECT_THAT(GetCommandLineWords("/START"), ElementsAre("", "START"));
  EXPECT_THAT(GetCommandLineWords("START/SHOW"), ElementsAre("", "START", "SHOW"));
  EXPECT_THAT(GetCommandLineWords("  x\ty-z=\"q\" "), ElementsAre("", "x", "y-z=\"q\""));
  EXPECT_THAT(GetCommandLineWords(" / \t/"), ElementsAre(""));
  EXPECT_THAT(GetCommandLineWords(""), ElementsAre(""));
}

TEST(CommandLineWords, EndWithTheTenthOrTheGivenNumber) {
  const auto words = GetCommandLineWords("1 2 3 4 5 6 7 8 9 10 11 12");
  EXPECT_EQ(words.size(), 11U);
  EXPECT_EQ(words.back(), "10");
  EXPECT_THAT(GetCommandLineWords("a b c", 2), ElementsAre("", "a", "b"));
}

}  // namespace
