#pragma once

// Moving, removing and hiding entries of the file system.

#include <filesystem>
#include <system_error>

namespace platform {

/// Renames or moves a file or folder. Never replaces an existing entry: that is an error.
void MoveEntry(const std::filesystem::path& from, const std::filesystem::path& to,
               std::error_code& error);

/// Like the functions of the standard library, but do not wait until the system has freed what a
/// large file took, which for hundreds of MiB is a tenth of a second.
bool RemoveEntry(const std::filesystem::path& path, std::error_code& error);
void ReplaceEntry(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::error_code& error);

/// Hides an entry from listings, or shows it again, as far as the system lets it. Does nothing on
/// Linux, where names that begin with a dot are hidden.
void SetHidden(const std::filesystem::path& path, bool hidden);

}  // namespace platform
