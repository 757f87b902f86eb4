#pragma once

// The standard streams of the process.

#include <string_view>

namespace platform {

/// Must be called before anything else. Writing to a reader that is gone then merely loses the
/// output. A stream that was closed at the start leads nowhere, and not into the next file opened
/// under its number. Child processes do not inherit this.
void SecureStandardStreams();

/// Write `line` and a line break, in the system's character set. On Windows a program with windows
/// has no such streams unless they are redirected; the line then goes to the console that started
/// the program, if there is one.
void SayOnStandardOutput(std::string_view line);
void SayOnStandardError(std::string_view line);

}  // namespace platform
