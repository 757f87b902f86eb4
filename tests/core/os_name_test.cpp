#include "core/os_name.h"

#include <gtest/gtest.h>

#include "core/hosts_file.h"

namespace {

using platform::HostsPlace;

struct Case {
  platform::SystemVersion version;
  const char* name;
  HostsPlace hosts;
};

TEST(OsName, IsThatOfTheTableAndDecidesWhereTheHostsFileIs) {
  const Case cases[] = {
      {{1, 4, 0}, "Windows 95", HostsPlace::kWindowsDirectory},
      {{1, 4, 10}, "Windows 98", HostsPlace::kWindowsDirectory},
      {{1, 4, 90}, "Windows Mellinnium", HostsPlace::kWindowsDirectory},
      {{1, 4, 3}, "", HostsPlace::kSystemDirectory},
      {{2, 3, 51}, "Windows NT 3.51", HostsPlace::kSystemDirectory},
      {{2, 4, 0}, "Windows NT 4.0", HostsPlace::kSystemDirectory},
      {{2, 5, 0}, "Windows 2000", HostsPlace::kSystemDirectory},
      {{2, 5, 2}, "Windows XP", HostsPlace::kSystemDirectory},
      {{2, 6, 0}, "Windows Vista", HostsPlace::kSystemDirectory},
      {{2, 6, 1}, "Windows 7", HostsPlace::kSystemDirectory},
      {{2, 6, 3}, "Windows 7", HostsPlace::kSystemDirectory},
      {{2, 10, 0}, "", HostsPlace::kSystemDirectory},
      {{0, 6, 1}, "Unknown OS Version", HostsPlace::kSystemDirectory},
      {{3, 4, 0}, "Unknown OS Version", HostsPlace::kSystemDirectory},
  };
  for (const Case& one : cases) {
    const std::string name = core::OsNameOf(one.version);
    EXPECT_EQ(name, one.name);
    EXPECT_EQ(core::HostsPlaceOf(name), one.hosts) << name;
  }
  EXPECT_EQ(core::HostsPlaceOf("windows mellinnium"), HostsPlace::kWindowsDirectory);
}

}  // namespace
