#pragma once

// The entry that starts the program at login, in addition to the Run key. Linux:
// autostart/<name>.desktop in the user's configuration directory, which all desktops honour.
// Windows: none, since the Run key suffices.

#include <string_view>
#include <system_error>

namespace platform {

/// Always true on Windows.
bool HasLoginEntry(std::string_view name);

/// Creates or replaces the entry, for the running executable and the current program directory.
std::error_code MakeLoginEntry(std::string_view name);

/// Succeeds if there is no entry.
std::error_code RemoveLoginEntry(std::string_view name);

}  // namespace platform
