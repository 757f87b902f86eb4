#pragma once

// Parts of the program that are loaded only when they are needed.

#include <filesystem>
#include <string>

namespace platform {

/// The address of `symbol` in the shared library `file`, a whole path: to a program that has been
/// given a right, the system's own search closes the folder that the program is in. Null if there
/// is none; `reason` is then the system's word on why. The library stays loaded.
void* FindInModule(const std::filesystem::path& file, const char* symbol, std::string& reason);

}  // namespace platform
