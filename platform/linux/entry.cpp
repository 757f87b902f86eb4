#include "platform/entry.h"

#include <fcntl.h>
#include <stdio.h>

#include <cerrno>

namespace platform {

void MoveEntry(const std::filesystem::path& from, const std::filesystem::path& to,
               std::error_code& error) {
  error.clear();
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  error.assign(errno, std::generic_category());
  // Not every file system can rename without replacing in one step.
  if (error != std::errc::invalid_argument) return;
  if (std::error_code missing; std::filesystem::exists(symlink_status(to, missing))) {
    error = std::make_error_code(std::errc::file_exists);
  } else {
    std::filesystem::rename(from, to, error);
  }
}

void SetHidden(const std::filesystem::path&, bool) {}

}  // namespace platform
