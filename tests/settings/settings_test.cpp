#include "platform/native_path.h"
#include "settings/autostart.h"
#include "settings/registry.h"
#include "settings/server_ini.h"
#include "tests/support/server_fixture.h"
#include "tests/support/user_directories.h"
#include "text/conversions.h"
#include "text/wildcards.h"

namespace {

using text::ToInt16;

TEST(AddSlash, LooksAtTheTrimmedPathButReturnsAnUnchangedOneUntrimmed) {
  const std::pair<const char*, const char*> cases[] = {
      {"a", "a\\"}, {"a  ", "a\\"}, {" a", " a\\"}, {"a/", "a/"}, {"a\\ ", "a\\ "}, {"", "\\"}};
  for (const auto& [path, slashed] : cases) EXPECT_EQ(ModCommon::AddSlash(path), slashed) << path;
}

TEST(Conversions, NumbersAreSixteenBitWithASign) {
  const std::pair<const char*, int> good[] = {{" 80 ", 80}, {"-5", -5}, {"+7", 7}, {"3.5", 4}};
  for (const auto& [text, number] : good) EXPECT_EQ(ToInt16(text), number) << text;
  for (const char* bad : {"", " ", "40000", "-32769", "8 0", "80x", "nan", "+-1", "1e9", "\t80"}) {
    EXPECT_EQ(ToInt16(bad), std::nullopt) << bad;
  }
}

class Settings : public test::ProgramFixture {};

TEST_F(Settings, StartTheProgramAtLoginByAValueNamedAfterIt) {
  const test::UserDirectories user;
  const std::string key = R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run)";
  const std::string executable = platform::PathTextForUser(Home().Text("Tarnwerk.exe"));
  // What was never on can be turned off.
  for (const bool on : {false, true, false, true}) {
    EXPECT_TRUE(settings::SetStartsWithSystem(Program(), on));
    EXPECT_EQ(settings::StartsWithSystem(Program()), on);
    EXPECT_EQ(Modreg::ReadText(key, "Tarnwerk"), on ? executable : "");
  }
  // Where the desktop has an entry for it, users may remove that.
  const auto entry = user.Configuration().Path("autostart/Tarnwerk.desktop");
  const bool removed = std::filesystem::remove(entry);
  EXPECT_EQ(settings::StartsWithSystem(Program()), !removed);
}

TEST(SettingsFile, IsTornOnlyWhereThatCanBeSeen) {
  using namespace std::string_literals;
  for (const std::string whole : {"", "[A]", "[A]\nodd\n", "; x", "\xEF\xBB\xBF[A]\nk="}) {
    EXPECT_FALSE(settings::AreTorn(whole)) << whole;
  }
  for (const std::string& torn : {"[A"s, "[A]\r\nFtpPo"s, "[A]\r\nk=v\r\n  ["s, "[A]\nk=\0v\n"s}) {
    EXPECT_TRUE(settings::AreTorn(torn)) << torn;
  }
}

TEST(Wildcards, MatchAsOnWindows) {
  using text::MatchesWildcard;
  EXPECT_TRUE(MatchesWildcard("Message_10.eml", "*_1*.EML"));
  EXPECT_TRUE(MatchesWildcard("noext", "*.*") && MatchesWildcard("中.txt", "?.txt"));
  EXPECT_FALSE(MatchesWildcard("中文.txt", "?.txt") || MatchesWildcard("abc", "ab"));
  EXPECT_FALSE(MatchesWildcard("Message_2.eml", "Message_1*.eml"));
}

}  // namespace
