#pragma once

// What the system says of its version.

#include <cstdint>

namespace platform {

struct SystemVersion {
  std::uint32_t platform = 0;  // 1: Windows 9x, 2: Windows NT, 0: none of them
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
};

SystemVersion AskSystemVersion();

}  // namespace platform
