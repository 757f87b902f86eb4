#pragma once

// The creation date and size of a file or folder on the disk.

#include <memory>
#include <optional>
#include <string>

#include "files/client_files.h"
#include "ftp/listing_lines.h"
#include "ftp/memory_budget.h"
#include "net/task.h"

namespace ModFtp {

/// `files` must outlive the tasks.

/// None if `path` is not a file, cannot be inspected, or has a size beyond a signed 32-bit integer.
std::optional<FileInfo> GetFileInfo(const files::ClientFiles& files, const std::string& path);

/// The same for an entry of `folder` that is no link.
std::optional<FileInfo> GetFileInfo(const platform::OpenFolder& folder, const std::string& name);

/// The same for a folder, whose size is that of everything in it; a link to one has size 0.
/// `memory` limits what is held of the folders being read.
net::Task<std::optional<FileInfo>> GetFolderInfo(const files::ClientFiles& files, std::string path,
                                                 bool isLink, std::shared_ptr<MemoryShare> memory);

}  // namespace ModFtp
