#include "platform/entry.h"

#include <windows.h>

namespace platform {
namespace {

void Report(BOOL succeeded, std::error_code& error) {
  error.clear();
  if (succeeded == 0) error.assign(static_cast<int>(GetLastError()), std::system_category());
}

}  // namespace

void MoveEntry(const std::filesystem::path& from, const std::filesystem::path& to,
               std::error_code& error) {
  Report(MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_COPY_ALLOWED), error);
}

bool RemoveEntry(const std::filesystem::path& path, std::error_code& error) {
  return std::filesystem::remove(path, error);
}

void ReplaceEntry(const std::filesystem::path& from, const std::filesystem::path& to,
                  std::error_code& error) {
  std::filesystem::rename(from, to, error);
}

void SetHidden(const std::filesystem::path& path, bool hidden) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return;
  const DWORD others = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_HIDDEN);
  SetFileAttributesW(path.c_str(), hidden ? others | FILE_ATTRIBUTE_HIDDEN : others);
}

}  // namespace platform
