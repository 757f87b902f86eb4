#pragma once

// Loading a part of the program when it is needed.

#include <filesystem>
#include <string>

namespace platform {

/// The address of `symbol` in the shared library `file`, or null with the system's message in
/// `reason`. `file` must be a full path: for a program with file capabilities the system does not
/// search the program's own folder. The library stays loaded.
void* FindInModule(const std::filesystem::path& file, const char* symbol, std::string& reason);

}  // namespace platform
