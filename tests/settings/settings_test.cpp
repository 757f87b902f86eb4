#include "settings/section.h"
#include "settings/server_ini.h"
#include "tests/support/server_fixture.h"
#include "text/conversions.h"
#include "text/wildcards.h"

namespace {

using ModCommon::AddSlash;
using text::ToBoolean;
using text::ToInt16;

TEST(AddSlash, LooksAtTheTrimmedPathButReturnsAnUnchangedOneUntrimmed) {
  EXPECT_EQ(AddSlash("a"), "a\\");
  EXPECT_EQ(AddSlash("a  "), "a\\");
  EXPECT_EQ(AddSlash(" a"), " a\\");
  EXPECT_EQ(AddSlash("a\\"), "a\\");
  EXPECT_EQ(AddSlash("a/"), "a/");
  EXPECT_EQ(AddSlash("a\\ "), "a\\ ");
  EXPECT_EQ(AddSlash(""), "\\");
}

TEST(Conversions, NumbersAreSixteenBitWithASign) {
  EXPECT_EQ(ToInt16(" 80 "), 80);
  EXPECT_EQ(ToInt16("-5"), -5);
  EXPECT_EQ(ToInt16("+7"), 7);
  EXPECT_EQ(ToInt16("32767"), 32767);
  EXPECT_EQ(ToInt16("2.5"), 2);
  EXPECT_EQ(ToInt16("3.5"), 4);
  for (const char* bad : {"", " ", "abc", "40000", "32767.5", "-32769", "8 0", "80x", "nan", "inf",
                          "+-1", "1e9", "\t80"}) {
    EXPECT_EQ(ToInt16(bad), std::nullopt) << bad;
  }
}

TEST(Conversions, BooleansAreWordsInAnyCaseOrNumbers) {
  EXPECT_EQ(ToBoolean("True"), true);
  EXPECT_EQ(ToBoolean(" false "), false);
  EXPECT_EQ(ToBoolean("1"), true);
  EXPECT_EQ(ToBoolean("-1"), true);
  EXPECT_EQ(ToBoolean("0"), false);
  EXPECT_EQ(ToBoolean(""), std::nullopt);
  EXPECT_EQ(ToBoolean("yes"), std::nullopt);
}

class Settings : public test::ProgramFixture {};

TEST_F(Settings, ABadNumberKeepsThePreviousValueAndIsToldWithSectionKeyAndText) {
  Home().Write("Server.ini", "[S]\nport=40000\nflag=maybe\n");
  const settings::Section section(Program(), "S");
  std::int16_t port = 21;
  bool flag = true;
  EXPECT_FALSE(section.Read("port", port));
  EXPECT_FALSE(section.Read("flag", flag));
  EXPECT_EQ(port, 21);
  EXPECT_TRUE(flag);
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("[S] port: cannot convert \"40000\""));
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("[S] flag: cannot convert \"maybe\""));
}

TEST(SettingsFile, IsTornOnlyWhereThatCanBeSeen) {
  using namespace std::string_literals;
  for (const std::string whole : {"", "\r\n", "[A]", "[A]\r\nk=", "[A]\r\nk=v", "[A]\r\nodd\r\n",
                                  "; no line end", "\xEF\xBB\xBF[A]\nk=v"}) {
    EXPECT_FALSE(settings::AreTorn(whole)) << whole;
  }
  for (const std::string& torn : {"[A"s, "[A]\r\nFtpPo"s, "[A]\r\nk=v\r\n  ["s, "[A]\nk=\0v\n"s}) {
    EXPECT_TRUE(settings::AreTorn(torn)) << torn;
  }
}

TEST(Wildcards, MatchAsOnWindows) {
  using text::MatchesWildcard;
  EXPECT_TRUE(MatchesWildcard("Message_1.eml", "*.EML"));
  EXPECT_TRUE(MatchesWildcard("noext", "*.*"));
  EXPECT_TRUE(MatchesWildcard("中.txt", "?.txt"));
  EXPECT_FALSE(MatchesWildcard("中文.txt", "?.txt"));
  EXPECT_TRUE(MatchesWildcard("aXbXc", "a*b*c"));
  EXPECT_TRUE(MatchesWildcard("Message_10.eml", "Message_1*.eml"));
  EXPECT_FALSE(MatchesWildcard("Message_2.eml", "Message_1*.eml"));
  EXPECT_FALSE(MatchesWildcard("abc", "ab"));
}

}  // namespace
