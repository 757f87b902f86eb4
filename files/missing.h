#pragma once

// The one failure that is often not one: what was looked for does not exist.

#include <system_error>

namespace files {

/// Whether `error` says that there is no such file or folder. A path through something that is no
/// folder, or one that is too long, is another error.
inline bool IsMissing(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory;
}

}  // namespace files
