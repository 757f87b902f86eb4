#pragma once

// The failure that is often expected: a missing file or folder.

#include <system_error>

namespace files {

/// Whether `error` means that there is no such file or folder. A path that leads through a file, or
/// is too long, is a different error.
inline bool IsMissing(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory;
}

}  // namespace files
