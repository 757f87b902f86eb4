#pragma once

// The system's messages for errors.

#include <string>
#include <system_error>

namespace platform {

/// The system's message for `error`, in UTF-8. (On Windows std::error_code::message returns it in
/// the ANSI code page.)
std::string SystemMessage(const std::error_code& error);

}  // namespace platform
