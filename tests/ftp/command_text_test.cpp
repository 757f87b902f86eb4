#include "ftp/command_text.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace ModFtp {
namespace {

TEST(CommandText, TypeTakesOneCharacterAsItCame) {
  const std::vector<std::tuple<std::string, std::string>> cases = {
      {"TYPE I\r\n", "I"}, {"TYPE i\r\n", "i"},  {"TYPE A N\r\n", "A"}, {"TYPE L8\r\n", "L"},
      {"TYPE\r\n", "A"},   {"TYPE  I\r\n", "A"}, {"TYPE X\r\n", "A"},   {"TYPE e\r\n", "e"},
  };
  for (const auto& [text, type] : cases) EXPECT_EQ(CutTransferType(text), type) << text;
}

TEST(CommandText, AMegabyteIsCutInOneGo) {
  const std::string name(1 << 20, '\xE5');
  EXPECT_EQ(CutArgument("RETR " + name + "\r\n", kAfterFourLetters), name);
}

}  // namespace
}  // namespace ModFtp
