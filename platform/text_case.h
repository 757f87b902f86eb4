#pragma once

// Upper case as in file systems: character by character and independent of the user's language.

#include <string>
#include <string_view>

namespace platform {

/// `text` (UTF-8) in upper case. Bytes that are not UTF-8 are kept.
std::string UpperCase(std::string_view text);

/// Whether two texts are equal except for case.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

}  // namespace platform
