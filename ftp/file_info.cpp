#include "ftp/file_info.h"

#include <limits>

#include "ftp/folder_walk.h"

namespace ModFtp {

std::optional<FileInfo> GetFileInfo(const files::ClientFiles& files, const std::string& path) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::error_code error;
  const platform::EntryFacts facts = files.Inspect(path, error);
  if (error || facts.isFolder || facts.size > kLargest) return std::nullopt;
  return FileInfo{facts.created, static_cast<std::int32_t>(facts.size)};
}

net::Task<std::optional<FileInfo>> GetFolderInfo(const files::ClientFiles& files, std::string path,
                                                 bool isLink, std::shared_ptr<MemoryShare> memory) {
  std::error_code error;
  const platform::EntryFacts facts = files.Inspect(path, error);
  if (error || !facts.isFolder) co_return std::nullopt;
  if (isLink) co_return FileInfo{facts.created, 0};
  net::Task<std::optional<std::int32_t>> addingUp = AddUpFolder(files, path, memory);
  const std::optional<std::int32_t> size = co_await addingUp;
  if (!size) co_return std::nullopt;
  co_return FileInfo{facts.created, *size};
}

}  // namespace ModFtp
