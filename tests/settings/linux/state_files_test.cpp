// The files that stand for the registry and the user's settings.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>
#include <vector>

#include "settings/application_settings.h"
#include "settings/registry.h"
#include "tests/support/user_directories.h"

namespace {

using Modreg::Root;

class StateFiles : public testing::Test {
 protected:
  static unsigned ModeOf(const std::filesystem::path& path) {
    struct stat facts = {};
    EXPECT_EQ(stat(path.c_str(), &facts), 0) << path;
    return facts.st_mode & 0777;
  }
  std::string Registry() const { return user_.Configuration().Read("Tarnwerk/registry.ini"); }
  test::UserDirectories user_;
};

TEST_F(StateFiles, HaveASectionForEachKey) {
  Modreg::Key key = Modreg::CreateKey(Root::kLocalMachine, "Software\\VEQ\\通用系统");
  Modreg::SetText(key, "TARNPath", "/srv/tarn");
  Modreg::SetNumber(key, "Number", -5);
  Modreg::SetText(key, "tarnpath", "/srv/other");
  EXPECT_EQ(Registry(),
            "[HKEY_LOCAL_MACHINE\\Software\\VEQ\\通用系统]\nTARNPath=/srv/other\nNumber=-5\n");
}

TEST_F(StateFiles, AreTheUsersAlone) {
  ASSERT_TRUE(settings::SaveSetting("Tarnwerk", "ManagerPwd", "PWD", "secret"));
  const auto folder = user_.Configuration().Path("Tarnwerk");
  EXPECT_EQ(ModeOf(folder), 0700U);
  EXPECT_EQ(ModeOf(folder / "settings.ini"), 0600U);
}

TEST_F(StateFiles, KeepWhatSomebodyElseWrote) {
  user_.Configuration().Write("Tarnwerk/registry.ini",
                              "; mine\n[HKEY_USERS\\a]\n\nx=1\n[HKEY_USERS\\b]\nx=2");
  Modreg::WriteText("HKEY_USERS\\B", "y", "3");
  EXPECT_EQ(Registry(), "; mine\n[HKEY_USERS\\a]\n\nx=1\n[HKEY_USERS\\b]\nx=2\ny=3\n");
  EXPECT_EQ(Modreg::ReadText("HKEY_USERS\\a", "X"), "1");
}

TEST_F(StateFiles, TakeNoNameOrValueForALineOfTheirOwn) {
  using namespace std::string_literals;
  Modreg::Key key = Modreg::CreateKey(Root::kUsers, "a");
  Modreg::SetText(key, "x", "1\r\n[HKEY_USERS\\b]\ny=2");
  EXPECT_EQ(Modreg::QueryText(key, "x"), "1  [HKEY_USERS\\b] y=2");
  for (const std::string& name : {"x=y"s, "x\ny"s, "[x"s, "x\0y"s, ";x"s, "x "s, ""s}) {
    EXPECT_THROW(Modreg::SetText(key, name, "3"), Modreg::Error) << name;
  }
  EXPECT_THROW(Modreg::CreateKey(Root::kUsers, "a]\n[b"), Modreg::Error);
}

TEST_F(StateFiles, ThatCannotBeReadAreNotReplaced) {
  user_.Configuration().Write("Tarnwerk/settings.ini/inside", "");
  EXPECT_FALSE(settings::SaveSetting("Tarnwerk", "ManagerPwd", "PWD", "x"));
  EXPECT_EQ(settings::GetSetting("Tarnwerk", "ManagerPwd", "PWD", "standard"), "standard");
  EXPECT_TRUE(user_.Configuration().Has("Tarnwerk/settings.ini/inside"));
  const auto registry = user_.Configuration().Path("Tarnwerk/registry.ini");
  std::filesystem::create_symlink("/dev/zero", registry);
  EXPECT_THROW(Modreg::CreateKey(Root::kUsers, "a"), Modreg::Error);
  EXPECT_TRUE(std::filesystem::is_symlink(registry));
}

TEST_F(StateFiles, LoseNothingWhenSeveralWriteAtOnce) {
  constexpr int kWriters = 4;
  constexpr int kValues = 20;
  std::vector<std::thread> writers;
  writers.reserve(kWriters);
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([writer] {
      for (int i = 0; i < kValues; ++i) {
        const std::string key = std::to_string(writer) + "-" + std::to_string(i);
        EXPECT_TRUE(settings::SaveSetting("Tarnwerk", "Numbers", key, "there"));
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (int i = 0; i < kWriters * kValues; ++i) {
    const std::string key = std::to_string(i / kValues) + "-" + std::to_string(i % kValues);
    EXPECT_EQ(settings::GetSetting("Tarnwerk", "Numbers", key), "there") << key;
  }
}

}  // namespace
