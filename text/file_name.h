#pragma once

// What a file name may hold. The rule is that of Windows on every system, so that content can be
// moved from one to the other.

#include <string_view>

namespace text {

/// Whether no file name may hold `c`: a control, or a character that Windows keeps for itself.
constexpr bool IsForbiddenInFileNames(char c) {
  constexpr std::string_view kForbidden = "\\/:*?\"<>|";
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F || kForbidden.find(c) != std::string_view::npos;
}

}  // namespace text
