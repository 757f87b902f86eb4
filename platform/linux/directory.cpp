#include "platform/directory.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/linux/descriptor.h"
#include "platform/linux/name_bytes.h"
#include "platform/linux/readable_size.h"
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

bool IsLink(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_LNK;
  struct stat facts = {};
  return fstatat(folder, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(facts.st_mode);
}

std::chrono::system_clock::time_point TimeOf(const statx_timestamp& time) {
  return std::chrono::system_clock::from_time_t(static_cast<std::time_t>(time.tv_sec));
}

EntryFacts Inspect(int folder, const char* name, int flags, std::error_code& error) {
  error.clear();
  struct statx facts = {};
  const unsigned wanted = STATX_TYPE | STATX_SIZE | STATX_BTIME | STATX_MTIME;
  if (statx(folder, name, flags, wanted, &facts) != 0) {
    error = LastError();
    return {};
  }
  const bool born = (facts.stx_mask & STATX_BTIME) != 0;
  const bool isFolder = S_ISDIR(facts.stx_mode);
  return {isFolder, isFolder ? 0 : facts.stx_size, TimeOf(born ? facts.stx_btime : facts.stx_mtime),
          TimeOf(facts.stx_mtime)};
}

}  // namespace

struct DirectoryReader::Search {
  explicit Search(DIR* opened) : directory(opened) {}
  ~Search() { closedir(directory); }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  DIR* directory;
};

DirectoryReader::DirectoryReader(const std::filesystem::path& folder, std::error_code& error) {
  error.clear();
  DIR* directory = opendir(folder.c_str());
  if (directory == nullptr) {
    error = LastError();
  } else {
    search_ = std::make_unique<Search>(directory);
  }
}

DirectoryReader::~DirectoryReader() = default;
DirectoryReader::DirectoryReader(DirectoryReader&&) noexcept = default;

void DirectoryReader::Read(std::size_t most, std::vector<DirectoryEntry>& entries,
                           std::error_code& error) {
  error.clear();
  if (!search_) return;
  const int folder = dirfd(search_->directory);
  while (most > 0) {
    errno = 0;
    const dirent* entry = readdir(search_->directory);
    if (entry == nullptr) {
      if (errno != 0) error = LastError();
      return;
    }
    const std::string_view bytes = entry->d_name;
    if (bytes == "." || bytes == "..") continue;
    std::string name = NameTextOf(entry->d_name);
    // Path texts cannot name an entry with a separator in its name. Checked after decoding: in GBK
    // the same byte may be half a character.
    if (name.find('\\') != std::string::npos) continue;
    const bool isHidden = name.front() == '.';
    entries.push_back(
        {std::move(name), IsFolder(folder, *entry), isHidden, IsLink(folder, *entry)});
    --most;
  }
}

std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error) {
  std::vector<DirectoryEntry> entries;
  DirectoryReader reader(folder, error);
  if (!error) reader.Read(std::numeric_limits<std::size_t>::max(), entries, error);
  if (error) return {};

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
  return Inspect(AT_FDCWD, path.c_str(), 0, error);
}

struct OpenFolder::Handle {
  Descriptor folder;
};

OpenFolder::OpenFolder(const std::filesystem::path& folder, std::error_code& error)
    : handle_(std::make_unique<Handle>()) {
  error.clear();
  handle_->folder = Descriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!handle_->folder.IsOpen()) error = LastError();
}

OpenFolder::~OpenFolder() = default;
OpenFolder::OpenFolder(OpenFolder&&) noexcept = default;

EntryFacts OpenFolder::Inspect(std::string_view name, std::error_code& error) const {
  return platform::Inspect(handle_->folder.Get(), NameBytes(std::string(name)).c_str(),
                           AT_SYMLINK_NOFOLLOW, error);
}

std::uint64_t OpenFolder::ReadableSize(std::string_view name, std::error_code& error) const {
  return ReadableSizeIn(handle_->folder.Get(), NameBytes(std::string(name)).c_str(), error);
}

FileStamp StampOf(const std::filesystem::path& path, std::error_code& error) {
  error.clear();
  struct stat facts = {};
  if (stat(path.c_str(), &facts) != 0) {
    error = LastError();
    return {};
  }
  constexpr std::int64_t kNanoseconds = 1000000000;
  return {facts.st_ino, static_cast<std::uint64_t>(facts.st_size),
          facts.st_mtim.tv_sec * kNanoseconds + facts.st_mtim.tv_nsec};
}

}  // namespace platform
