#include "platform/linux/folder_names.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/native_path.h"
#include "platform/text_case.h"

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

std::string UpperName(const std::string& name) { return UpperCase(NameTextOf(name)); }

std::uint64_t HashStep(std::uint64_t hash, char c) {
  return (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
}

std::uint64_t HashOfUpper(std::string_view upperName) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : upperName) hash = HashStep(hash, c);
  return hash;
}

// The same hash of a name in any case. Nearly all names are ASCII and need no copy.
std::uint64_t HashOf(const char* name) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char* c = name; *c != '\0'; ++c) {
    if (static_cast<unsigned char>(*c) >= 0x80) return HashOfUpper(UpperName(name));
    hash = HashStep(hash, *c >= 'a' && *c <= 'z' ? static_cast<char>(*c - 'a' + 'A') : *c);
  }
  return hash;
}

// All names of one folder. Takes about 16 bytes per name, plus the name.
class Names {
 public:
  void Add(const char* name) {
    entries_.emplace_back(HashOf(name), static_cast<std::uint32_t>(bytes_.size()));
    bytes_.append(name).push_back('\0');
    ++count_;
  }
  void Order() { std::sort(entries_.begin(), entries_.end()); }

  /// Frees the names if there are too many to keep.
  void Drop() {
    bytes_ = {};
    entries_ = {};
  }

  std::optional<std::string> Find(const std::string& upperName) const {
    const std::uint64_t hash = HashOfUpper(upperName);
    std::optional<std::string> found;
    for (auto entry = std::lower_bound(entries_.begin(), entries_.end(), Entry{hash, 0});
         entry != entries_.end() && entry->first == hash; ++entry) {
      const std::string name = bytes_.c_str() + entry->second;
      if (UpperName(name) == upperName && (!found || name < *found)) found = name;
    }
    return found;
  }

  /// The number of names added, whether dropped or not.
  std::size_t Count() const { return count_; }
  std::size_t Bytes() const { return bytes_.size() + entries_.size() * sizeof(Entry); }

 private:
  using Entry = std::pair<std::uint64_t, std::uint32_t>;  // hash, offset of the name

  std::string bytes_;  // NUL-terminated names
  std::vector<Entry> entries_;
  std::size_t count_ = 0;
};

// In a folder with more names than this, names are found only as written.
constexpr std::size_t kMostNames = 200'000;

std::optional<Names> ReadNames(int folder) {
  const int readable = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* directory = readable < 0 ? nullptr : fdopendir(readable);
  if (directory == nullptr) return std::nullopt;
  Names names;
  const dirent* entry = nullptr;
  while (names.Count() <= kMostNames && (entry = readdir(directory)) != nullptr) {
    names.Add(entry->d_name);
  }
  closedir(directory);
  if (names.Count() > kMostNames) names.Drop();
  names.Order();
  return names;
}

// The folder's birth time in nanoseconds; 0 if the file system does not record it.
std::int64_t BornAt(int folder) {
  constexpr std::int64_t kNanoseconds = 1000000000;
  struct statx facts = {};
  if (statx(folder, "", AT_EMPTY_PATH, STATX_BTIME, &facts) != 0) return 0;
  return facts.stx_btime.tv_sec * kNanoseconds + facts.stx_btime.tv_nsec;
}

// The most recently read folders, bounded in number and memory.
class FolderMemory {
 public:
  std::optional<std::string> Find(int folder, const std::string& name) {
    struct stat facts = {};
    if (fstat(folder, &facts) != 0) return std::nullopt;
    const Key key = {facts.st_dev, facts.st_ino, BornAt(folder)};
    auto known = folders_.find(key);
    if (known == folders_.end() || !IsGood(known->second, facts.st_mtim)) {
      known = Read(key, folder, facts.st_mtim);
    }
    if (known == folders_.end()) return std::nullopt;
    return known->second.names.Find(UpperName(name));
  }

 private:
  // Inode numbers are reused as soon as a folder is deleted; the birth time tells the two apart.
  using Key = std::tuple<dev_t, ino_t, std::int64_t>;
  struct Folder {
    Names names;
    timespec changed;
    bool settled;
    Clock::time_point readAt;
  };
  using Folders = std::map<Key, Folder>;

  static constexpr std::size_t kMostFolders = 256;
  static constexpr std::size_t kMostBytes = 32U << 20;
  static constexpr std::size_t kManyNames = 1000;
  static constexpr std::chrono::microseconds kAgePerName{10};

  // Timestamps are coarse: a folder changed just now may change again without a new time.
  static bool IsSettled(const timespec& changed) { return std::time(nullptr) - changed.tv_sec > 2; }

  // A large folder is reread only when its age is about fifty times what reading it takes. So a
  // client that keeps changing it costs at most a fiftieth of the time.
  static bool IsGood(const Folder& folder, const timespec& changed) {
    const bool same =
        folder.changed.tv_sec == changed.tv_sec && folder.changed.tv_nsec == changed.tv_nsec;
    if (same && folder.settled) return true;
    const std::size_t count = folder.names.Count();
    return count > kManyNames && Clock::now() - folder.readAt < kAgePerName * count;
  }

  Folders::iterator Read(const Key& key, int folder, const timespec& changed) {
    Forget(key);
    std::optional<Names> names = ReadNames(folder);
    if (!names) return folders_.end();
    if (folders_.size() >= kMostFolders || bytes_ + names->Bytes() > kMostBytes) {
      folders_.clear();
      bytes_ = 0;
    }
    bytes_ += names->Bytes();
    Folder read = {std::move(*names), changed, IsSettled(changed), Clock::now()};
    return folders_.emplace(key, std::move(read)).first;
  }

  void Forget(const Key& key) {
    const auto known = folders_.find(key);
    if (known == folders_.end()) return;
    bytes_ -= known->second.names.Bytes();
    folders_.erase(known);
  }

  Folders folders_;
  std::size_t bytes_ = 0;
};

}  // namespace

std::optional<std::string> FindIgnoringCase(int folder, const std::string& name) {
  static FolderMemory memory;
  return memory.Find(folder, name);
}

}  // namespace platform
