#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>

namespace platform {

/// A FILETIME counts 100-nanosecond intervals since 1601.
inline std::chrono::system_clock::time_point TimeOf(const FILETIME& time) {
  constexpr std::int64_t kUnixEpoch = 116444736000000000;
  using Intervals = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  const Intervals sinceEpoch(
      (static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime) - kUnixEpoch);
  return std::chrono::system_clock::time_point(
      std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceEpoch));
}

}  // namespace platform
