#include "settings/autostart.h"

#include <gtest/gtest.h>

#include "platform/native_path.h"
#include "settings/registry.h"
#include "tests/support/user_directories.h"

namespace {

constexpr const char* kRunKey =
    R"(HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Run)";

TEST(Autostart, IsAValueNamedAfterTheExecutableAndEmptyWhenTurnedOff) {
  const test::UserDirectories user;
  const test::TemporaryFolder folder;
  const settings::Program program(folder.Text(), "自动 启动");
  EXPECT_FALSE(settings::StartsWithSystem(program));
  // What was never on can be turned off.
  EXPECT_TRUE(settings::SetStartsWithSystem(program, false));
  EXPECT_FALSE(settings::StartsWithSystem(program));

  EXPECT_TRUE(settings::SetStartsWithSystem(program, true));
  EXPECT_TRUE(settings::StartsWithSystem(program));
  EXPECT_EQ(Modreg::ReadText(kRunKey, "自动 启动"),
            platform::PathTextForUser(folder.Text("自动 启动.exe")));

  EXPECT_TRUE(settings::SetStartsWithSystem(program, false));
  EXPECT_FALSE(settings::StartsWithSystem(program));
  EXPECT_EQ(Modreg::ReadText(kRunKey, "自动 启动"), "");
}

}  // namespace
