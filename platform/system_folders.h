#pragma once

// Places that belong to the system or the user rather than to the program directory.

#include <filesystem>

namespace platform {

/// The directory of a Windows that the hosts file is kept in: drivers\etc below the system
/// directory, or the Windows directory itself on the oldest ones.
enum class HostsPlace { kSystemDirectory, kWindowsDirectory };

/// The file in which host names are given addresses: what TARNWERK_HOSTS names; else on Windows the
/// one in `place`, on Linux /etc/hosts.
std::filesystem::path HostsFile(HostsPlace place);

/// Where the user's programs keep their settings. Linux: $XDG_CONFIG_HOME (or ~/.config); Windows:
/// the user's application data.
std::filesystem::path ConfigurationDirectory();

/// Per-user state: Tarnwerk in that directory. Not created here.
std::filesystem::path StateDirectory();

/// Where choosing a folder begins. Linux: the user's home; Windows: C:\.
std::filesystem::path FirstFolderToChooseFrom();

/// The user's own files of this program. Linux: $XDG_DATA_HOME/tarnwerk (or
/// ~/.local/share/tarnwerk); Windows: Tarnwerk in the user's local application data. Not created
/// here; empty if the environment tells of none.
std::filesystem::path DataDirectory();

}  // namespace platform
