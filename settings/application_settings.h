#pragma once

// Settings of a program that belong to the user, not to the program directory: texts, addressed by
// the program's name, a section and a key. On Windows they are in the registry below
// HKEY_CURRENT_USER\Software\Tarnwerk, on Linux in settings.ini in the per-user state directory,
// which the user alone can read.

#include <string>
#include <string_view>

namespace settings {

/// The setting, or `standard` if there is none or it cannot be read.
std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view standard = {});

/// False if it could not be written.
bool SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                 std::string_view value);

}  // namespace settings
