#pragma once

// What every fuzzer needs: its input as a text, and a way to report a wrong answer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

inline void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace fuzz
