#include "ftp/file_info.h"

#include <limits>

#include "ftp/folder_walk.h"

namespace ModFtp {

namespace {

std::optional<FileInfo> FileInfoOf(const platform::EntryFacts& facts,
                                   const std::error_code& error) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
  if (error || facts.isFolder || facts.size > kLargest) return std::nullopt;
  return FileInfo{facts.created, static_cast<std::int32_t>(facts.size)};
}

}  // namespace

std::optional<FileInfo> GetFileInfo(const files::ClientFiles& files, const std::string& path) {
  std::error_code error;
  const platform::EntryFacts facts = files.Inspect(path, error);
  return FileInfoOf(facts, error);
}

std::optional<FileInfo> GetFileInfo(const platform::OpenFolder& folder, const std::string& name) {
  std::error_code error;
  const platform::EntryFacts facts = folder.Inspect(name, error);
  return FileInfoOf(facts, error);
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
