#pragma once

// Places that belong to the system or the user rather than to the program directory.

#include <filesystem>

namespace platform {

/// The file in which host names are given addresses. Linux: what TARNWERK_HOSTS names, else
/// /etc/hosts.
std::filesystem::path HostsFile();

/// Per-user state. Linux: $XDG_CONFIG_HOME/Tarnwerk (or ~/.config/Tarnwerk); Windows: the user's
/// application data. Not created here.
std::filesystem::path StateDirectory();

}  // namespace platform
