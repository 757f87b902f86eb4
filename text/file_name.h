#pragma once

// The characters allowed in file names. The rule is that of Windows on every system, so that
// content can be moved between systems.

#include <string_view>

#include "text/strings.h"

namespace text {

/// Whether `c` is forbidden in file names: a control character, or one that Windows reserves.
constexpr bool IsForbiddenInFileNames(char c) {
  constexpr std::string_view kForbidden = "\\/:*?\"<>|";
  return IsControl(c) || kForbidden.find(c) != std::string_view::npos;
}

}  // namespace text
