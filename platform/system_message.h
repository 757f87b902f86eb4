#pragma once

// What the system says of an error, as a text of the program.

#include <string>
#include <system_error>

namespace platform {

/// The system's own sentence for `error` in UTF-8. (std::error_code::message gives it in the ANSI
/// code page on Windows.)
std::string SystemMessage(const std::error_code& error);

}  // namespace platform
