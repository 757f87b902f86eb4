#include "platform/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "platform/native_path.h"
#include "platform/text_case.h"

namespace platform {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

bool IsFolder(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat facts = {};
  return fstatat(folder, entry.d_name, &facts, 0) == 0 && S_ISDIR(facts.st_mode);
}

std::vector<DirectoryEntry> ReadEntries(DIR* directory) {
  std::vector<DirectoryEntry> entries;
  while (const dirent* entry = readdir(directory)) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    // Only the name: the text of a path would turn a backslash in it into a separator.
    entries.push_back({NameTextOf(name), IsFolder(dirfd(directory), *entry), name.front() == '.'});
  }
  return entries;
}

std::chrono::system_clock::time_point TimeOf(const statx_timestamp& time) {
  return std::chrono::system_clock::from_time_t(static_cast<std::time_t>(time.tv_sec));
}

}  // namespace

std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error) {
  error.clear();
  DIR* directory = opendir(folder.c_str());
  if (directory == nullptr) {
    error = LastError();
    return {};
  }
  std::vector<DirectoryEntry> entries = ReadEntries(directory);
  closedir(directory);

  std::vector<std::pair<std::string, std::size_t>> order;
  order.reserve(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    order.emplace_back(UpperCase(entries[i].name), i);
  }
  std::sort(order.begin(), order.end());
  std::vector<DirectoryEntry> sorted;
  sorted.reserve(entries.size());
  for (const auto& [name, index] : order) sorted.push_back(std::move(entries[index]));
  return sorted;
}

EntryFacts InspectEntry(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  struct statx facts = {};
  const unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_BTIME | STATX_MTIME;
  if (statx(AT_FDCWD, path.c_str(), 0, wanted, &facts) != 0) {
    error = LastError();
    return {};
  }
  const bool born = (facts.stx_mask & STATX_BTIME) != 0;
  const bool isFolder = S_ISDIR(facts.stx_mode);
  return {isFolder, isFolder ? 0 : facts.stx_size,
          TimeOf(born ? facts.stx_btime : facts.stx_mtime)};
}

}  // namespace platform
