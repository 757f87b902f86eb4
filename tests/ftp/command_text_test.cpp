#include "ftp/command_text.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace ModFtp {
namespace {

TEST(CommandText, TheLengthOfTheWholeTextChoosesTheSeparator) {
  const std::vector<std::tuple<std::string, std::string>> cases = {
      {"PWD\r\n", "PWD"},
      {"pwd\r\n", "PWD"},
      {"LIST\r\n", "LIST"},
      {"LIST -la\r\n", "LIST"},
      {"USER anonymous\r\n", "USER"},
      {"CWD a\r\n", "CWD"},
      {"CWD a", ""},         // five characters, no line end
      {"RMD \r\n", "RMD "},  // six: the blank belongs to the word
      {"NOOP", ""},
      {"\r\n", ""},
      {"", ""},
      {"ABOR\r\n", "ABOR"},
      {"\xFF\xF4\xFF\xF2"
       "ABOR\r\n",
       ""},                    // ten characters without a blank
      {"PWD\r\nPWD\r\n", ""},  // two commands in one arrival
      {"PWD\r\nLIST -a\r\n", "PWD\r\nLIST"},
      {" LIST\r\n", ""},   // begins with its separator
      {"CWD \u554A", ""},  // five characters in seven bytes
      {"CWD \u554A\r\n", "CWD"},
      {"LIST\r\r", ""},
  };
  for (const auto& [text, word] : cases) EXPECT_EQ(CommandWord(text), word) << text;
}

TEST(CommandText, ArgumentsLoseTheirLastTwoCharactersWhateverTheseAre) {
  const std::vector<std::tuple<std::string, std::size_t, std::optional<std::string>>> cases = {
      {"RETR a.txt\r\n", 6, "a.txt"},
      {"RETR a.txt", 6, "a.t"},
      {"RETR a.txt\n", 6, "a.tx"},
      {"RMD up\\new\r\n", 5, "up\\new"},
      {"DELE x\r", 6, ""},
      {"STOR \u6587\u4EF6\r\n", 6, "\u6587\u4EF6"},
      {"STOR a\u6587\u4EF6", 6, "a"},
      {"RETR  two blanks \r\n", 6, " two blanks "},
      {"CWD \xB0\xA1\r\n", 5, "\xB0\xA1"},  // a name in another code page comes through whole
      {"DELE\r\n", 6, std::nullopt},
      {"MKD\r\n", 5, std::nullopt},
      {"", 6, std::nullopt},
  };
  for (const auto& [text, position, argument] : cases) {
    EXPECT_EQ(CutArgument(text, position), argument) << text;
  }
}

TEST(CommandText, RestCountsTheLineEndAmongItsThreeCharacters) {
  const std::vector<std::tuple<std::string, std::optional<std::string>>> cases = {
      {"REST 100\r\n", "100"},    {"REST 5\r\n", "5"},       {"REST \r\n", std::nullopt},
      {"REST\r\n", std::nullopt}, {"REST 12", std::nullopt}, {"REST 123", "1"},
  };
  for (const auto& [text, offset] : cases) EXPECT_EQ(CutRestart(text), offset) << text;
}

TEST(CommandText, TypeTakesOneCharacterAsItCame) {
  const std::vector<std::tuple<std::string, std::string>> cases = {
      {"TYPE I\r\n", "I"}, {"TYPE i\r\n", "i"},  {"TYPE A N\r\n", "A"}, {"TYPE L8\r\n", "L"},
      {"TYPE\r\n", "A"},   {"TYPE  I\r\n", "A"}, {"TYPE X\r\n", "A"},   {"TYPE e\r\n", "e"},
  };
  for (const auto& [text, type] : cases) EXPECT_EQ(CutTransferType(text), type) << text;
}

TEST(CommandText, SiteKnowsHelpByItsFirstFourCharacters) {
  for (const char* text : {"SITE HELP\r\n", "SITE help\r\n", "SITE HELPME\r\n"}) {
    EXPECT_TRUE(AsksForHelp(text)) << text;
  }
  for (const char* text : {"SITE\r\n", "SITE CHMOD\r\n", "SITE  HELP\r\n", "SITE HEL\r\n"}) {
    EXPECT_FALSE(AsksForHelp(text)) << text;
  }
}

TEST(CommandText, AMegabyteIsCutInOneGo) {
  const std::string name(1 << 20, '\xE5');
  EXPECT_EQ(CutArgument("RETR " + name + "\r\n", kAfterFourLetters), name);
}

}  // namespace
}  // namespace ModFtp
