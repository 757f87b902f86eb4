#pragma once

// What starts this program at the user's login besides the Run key. Linux: the entry
// autostart/<name>.desktop in the user's configuration directory, which every desktop acts on.
// Windows: nothing, the Run key alone does it.

#include <string_view>
#include <system_error>

namespace platform {

/// Windows: always.
bool HasLoginEntry(std::string_view name);

/// The running executable with the program directory that it has now.
std::error_code MakeLoginEntry(std::string_view name);

/// That there is none is no error.
std::error_code RemoveLoginEntry(std::string_view name);

}  // namespace platform
