#pragma once

// Where the program tells the one who started it that something is wrong.

#include <string_view>

namespace platform {

/// Writes `line` and a line break to standard error. On Windows, where a program with windows has
/// none unless it is redirected, it goes to the console that the program was started from.
void SayOnStandardError(std::string_view line);

}  // namespace platform
