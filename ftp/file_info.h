#pragma once

// What is known of a file or folder on the disk.

#include <memory>
#include <optional>
#include <string>

#include "ftp/listing_lines.h"
#include "ftp/memory_budget.h"
#include "net/task.h"

namespace ModFtp {

/// None if `path` is no file, cannot be looked at, or is larger than a 32-bit number with a sign
/// holds.
std::optional<FileInfo> GetFileInfo(const std::string& path);

/// The same of a folder, which counts with all that is in it; a link to one counts as empty.
net::Task<std::optional<FileInfo>> GetFolderInfo(std::string path, bool isLink,
                                                 std::shared_ptr<MemoryShare> memory);

}  // namespace ModFtp
