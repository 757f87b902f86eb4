#pragma once

// Places that belong to the system or the user rather than to the program directory.

#include <filesystem>

namespace platform {

/// The file in which host names are given addresses. Linux: what TARNWERK_HOSTS names, else
/// /etc/hosts.
std::filesystem::path HostsFile();

/// Where the user's programs keep their settings. Linux: $XDG_CONFIG_HOME (or ~/.config); Windows:
/// the user's application data.
std::filesystem::path ConfigurationDirectory();

/// Per-user state: Tarnwerk in that directory. Not created here.
std::filesystem::path StateDirectory();

}  // namespace platform
