#pragma once

// The version that the system reports.

#include <cstdint>

namespace platform {

struct SystemVersion {
  std::uint32_t platform = 0;  // 1: Windows 9x, 2: Windows NT, 0: any other
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
};

SystemVersion AskSystemVersion();

}  // namespace platform
