// The files that stand for the registry and the user's settings.

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "settings/application_settings.h"
#include "settings/registry.h"
#include "tests/support/user_directories.h"

namespace {

namespace fs = std::filesystem;

class StateFiles : public testing::Test {
 protected:
  const test::UserDirectories user_;
  const test::TemporaryFolder& folder_ = user_.Configuration();
};

TEST_F(StateFiles, KeepWhatSomebodyElseWrote) {
  folder_.Write("Tarnwerk/registry.ini", "; mine\n[HKEY_USERS\\a]\n\nx=1\n[HKEY_USERS\\b]\nx=2");
  Modreg::WriteText("HKEY_USERS\\B", "y", "3");
  Modreg::WriteText("HKEY_USERS\\B", "X", "4");
  EXPECT_EQ(folder_.Read("Tarnwerk/registry.ini"),
            "; mine\n[HKEY_USERS\\a]\n\nx=1\n[HKEY_USERS\\b]\nx=4\ny=3\n");
  fs::create_hard_link(folder_.Path("Tarnwerk/registry.ini"), folder_.Path("same"));
  Modreg::WriteText("HKEY_USERS\\b", "y", "3");
  EXPECT_EQ(fs::hard_link_count(folder_.Path("same")), 2U) << "written without need";
}

TEST_F(StateFiles, TakeNoNameOrValueForALineOfTheirOwn) {
  using namespace std::string_literals;
  Modreg::Key key = Modreg::CreateKey(Modreg::Root::kUsers, "a");
  Modreg::SetText(key, "x", "1\r\n[HKEY_USERS\\b]\ny=2");
  EXPECT_EQ(Modreg::QueryText(key, "x"), "1  [HKEY_USERS\\b] y=2");
  for (const std::string& name : {"x=y"s, "x\ny"s, "[x"s, "x\0y"s, ";x"s, "x "s, ""s}) {
    EXPECT_THROW(Modreg::SetText(key, name, "3"), Modreg::Error) << name;
  }
}

TEST_F(StateFiles, ThatCannotBeReadAreNotReplaced) {
  folder_.Write("Tarnwerk/settings.ini/inside", "");
  EXPECT_FALSE(settings::SaveSetting("Tarnwerk", "ManagerPwd", "PWD", "x"));
  EXPECT_EQ(settings::GetSetting("Tarnwerk", "ManagerPwd", "PWD", "standard"), "standard");
  EXPECT_TRUE(folder_.Has("Tarnwerk/settings.ini/inside"));
}

TEST_F(StateFiles, LoseNothingWhenSeveralWriteAtOnceAndAreTheUsersAlone) {
  const auto save = [](int writer) {
    for (int i = writer; i < 80; i += 4) {
      EXPECT_TRUE(settings::SaveSetting("Tarnwerk", "Numbers", std::to_string(i), "there"));
    }
  };
  std::vector<std::thread> writers;
  writers.reserve(4);
  for (int writer = 0; writer < 4; ++writer) writers.emplace_back(save, writer);
  for (std::thread& writer : writers) writer.join();
  for (int i = 0; i < 80; ++i) {
    EXPECT_EQ(settings::GetSetting("Tarnwerk", "Numbers", std::to_string(i)), "there") << i;
  }
  EXPECT_EQ(fs::status(folder_.Path("Tarnwerk")).permissions(), fs::perms::owner_all);
  EXPECT_EQ(fs::status(folder_.Path("Tarnwerk/settings.ini")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
