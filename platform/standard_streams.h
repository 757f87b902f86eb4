#pragma once

// The standard streams of the process.

#include <string_view>

namespace platform {

/// Must be called before anything else. Writing to a reader that is gone then merely loses the
/// output. A stream that was closed at the start leads nowhere, and not into the next file opened
/// under its number. Child processes do not inherit this.
void SecureStandardStreams();

/// Writes `line` and a line break to standard error. On Windows a program with windows has no
/// standard error unless it is redirected; the line then goes to the console that started the
/// program.
void SayOnStandardError(std::string_view line);

}  // namespace platform
