#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace test {

/// Whether this process has anything in `folder` open. Linux only.
inline bool HasOpenFileIn(const std::filesystem::path& folder) {
  std::error_code error;
  return std::any_of(std::filesystem::directory_iterator("/proc/self/fd", error), {},
                     [&](const std::filesystem::directory_entry& entry) {
                       const auto opened = std::filesystem::read_symlink(entry, error);
                       return opened.string().starts_with(folder.string());
                     });
}

}  // namespace test
