#pragma once

// The system's firewall for incoming connections.

#include <string_view>
#include <system_error>

namespace platform {

/// Adds the program `image` (its whole path, a path text) under the title `name` to the programs
/// that may be reached from everywhere. Windows: through the firewall's automation objects, which
/// need not exist. Linux: there is no such list; succeeds.
std::error_code AuthorizeProgram(std::string_view image, std::string_view name);

}  // namespace platform
