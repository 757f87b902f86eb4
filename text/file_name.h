#pragma once

// The characters allowed in file names. The rule is that of Windows on every system, so that
// content can be moved between systems.

#include <string_view>

namespace text {

/// Whether `c` is forbidden in file names: a control character, or one that Windows reserves.
constexpr bool IsForbiddenInFileNames(char c) {
  constexpr std::string_view kForbidden = "\\/:*?\"<>|";
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F || kForbidden.find(c) != std::string_view::npos;
}

}  // namespace text
