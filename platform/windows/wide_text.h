#pragma once

// UTF-8 texts of the program and the UTF-16 texts of the Windows interfaces.

#include <algorithm>
#include <string>
#include <string_view>

namespace platform {

/// UTF-8 as UTF-16; a sequence that is not UTF-8 becomes the replacement character.
std::wstring WideText(std::string_view utf8);

/// UTF-16 as UTF-8.
std::string NarrowText(std::wstring_view wide);

}  // namespace platform
