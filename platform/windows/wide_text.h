#pragma once

// Conversion between the program's UTF-8 and the UTF-16 of the Windows API.

#include <algorithm>
#include <string>
#include <string_view>

namespace platform {

/// A sequence that is not UTF-8 becomes the replacement character.
std::wstring WideText(std::string_view utf8);

std::string NarrowText(std::wstring_view wide);

}  // namespace platform
