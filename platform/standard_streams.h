#pragma once

// The streams that the program was given by the one who started it.

#include <string_view>

namespace platform {

/// To be called first of all. From now on what is written for a reader that has gone is lost, and
/// no more than that. A stream that was closed when the program was started leads nowhere, instead
/// of into the file that would be opened next under its number. Programs that are started later are
/// not told of this.
void SecureStandardStreams();

/// Writes `line` and a line break to standard error. On Windows, where a program with windows has
/// none unless it is redirected, it goes to the console that the program was started from.
void SayOnStandardError(std::string_view line);

}  // namespace platform
