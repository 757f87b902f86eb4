#pragma once

// Upper case as the file system knows it: one character at a time, whatever the user's language.

#include <string>
#include <string_view>

namespace platform {

/// UTF-8 `text` in upper case. Bytes that are not UTF-8 stay as they are.
std::string UpperCase(std::string_view text);

/// Whether two texts are the same without regard to case.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

}  // namespace platform
