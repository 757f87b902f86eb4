#pragma once

// Places that belong to the system or the user and not to the program directory.

#include <filesystem>

namespace platform {

/// The directory of the hosts file on Windows: drivers\etc below the system directory, or the
/// Windows directory on the oldest versions.
enum class HostsPlace { kSystemDirectory, kWindowsDirectory };

/// The hosts file: TARNWERK_HOSTS if it is set, else the one in `place` on Windows and /etc/hosts
/// on Linux.
std::filesystem::path HostsFile(HostsPlace place);

// The user's home on Linux is $HOME, else the one that the system knows for the user, else "/".

/// The directory of the user's settings. Linux: $XDG_CONFIG_HOME (or ~/.config); Windows: the
/// user's application data.
std::filesystem::path ConfigurationDirectory();

/// Per-user state: Tarnwerk in the configuration directory. Not created here.
std::filesystem::path StateDirectory();

/// The initial folder of a folder chooser. Linux: the user's home; Windows: C:\.
std::filesystem::path FirstFolderToChooseFrom();

/// The user's files of this program. Linux: $XDG_DATA_HOME/tarnwerk (or ~/.local/share/tarnwerk);
/// Windows: Tarnwerk in the user's local application data. Not created here; empty if the
/// environment does not define it.
std::filesystem::path DataDirectory();

}  // namespace platform
