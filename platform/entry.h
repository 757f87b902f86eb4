#pragma once

// Moving and renaming entries of the file system.

#include <filesystem>
#include <system_error>

namespace platform {

/// Renames or moves a file or folder. Never replaces an existing entry: that is an error.
void MoveEntry(const std::filesystem::path& from, const std::filesystem::path& to,
               std::error_code& error);

}  // namespace platform
