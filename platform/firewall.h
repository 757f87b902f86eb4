#pragma once

// The system's firewall for incoming connections.

#include <string_view>
#include <system_error>

namespace platform {

/// Adds the program `image` (a full path text) under the title `name` to the programs that accept
/// connections from any address. Windows: uses the firewall's automation objects, which may be
/// missing. Linux: has no such list; succeeds.
std::error_code AuthorizeProgram(std::string_view image, std::string_view name);

}  // namespace platform
