#pragma once

// A new folder for temporary files that other users cannot read.

#include <filesystem>
#include <system_error>

namespace platform {

/// Creates it in the system's folder for temporary files. Empty with `error` set on failure.
std::filesystem::path MakePrivateFolder(std::error_code& error);

}  // namespace platform
