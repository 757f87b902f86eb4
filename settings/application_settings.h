#pragma once

// Settings that belong to the user and not to the program directory: texts, addressed by program
// name, section and key. On Windows they are in the registry below
// HKEY_CURRENT_USER\Software\Tarnwerk, on Linux in settings.ini in the per-user state directory,
// readable by the user alone.

#include <string>
#include <string_view>

namespace settings {

/// The setting, or `standard` if it is missing or cannot be read.
std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view standard = {});

/// Whether the setting was written.
bool SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                 std::string_view value);

}  // namespace settings
