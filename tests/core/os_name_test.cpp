#include "core/os_name.h"

#include <gtest/gtest.h>

#include "core/hosts_file.h"

namespace {

TEST(OsName, DecidesWhereTheHostsFileIs) {
  const auto kWindows = platform::HostsPlace::kWindowsDirectory;
  const auto kSystem = platform::HostsPlace::kSystemDirectory;
  const struct {
    platform::SystemVersion version;
    const char* name;
    platform::HostsPlace hosts;
  } cases[] = {
      {{1, 4, 10}, "Windows 98", kWindows},       {{1, 4, 90}, "Windows Mellinnium", kWindows},
      {{2, 5, 0}, "Windows 2000", kSystem},       {{2, 5, 2}, "Windows XP", kSystem},
      {{2, 6, 3}, "Windows 7", kSystem},          {{2, 10, 0}, "", kSystem},
      {{0, 6, 1}, "Unknown OS Version", kSystem},
  };
  for (const auto& each : cases) {
    const std::string name = core::OsNameOf(each.version);
    EXPECT_EQ(name, each.name);
    EXPECT_EQ(core::HostsPlaceOf(name), each.hosts) << name;
  }
}

}  // namespace
