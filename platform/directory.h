#pragma once

// What a folder holds and what the system knows of an entry.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace platform {

struct DirectoryEntry {
  std::string name;  // UTF-8
  bool isFolder = false;
  bool isHidden = false;
  bool isLink = false;
};

struct EntryFacts {
  bool isFolder = false;
  std::uint64_t size = 0;                         // bytes; 0 for a folder
  std::chrono::system_clock::time_point created;  // birth time, else modification time
};

/// Tells whether a file is still the one that it was, with the content that it had: it changes when
/// the file is written or another one takes its name.
struct FileStamp {
  std::uint64_t id = 0;  // of the file in its file system
  std::uint64_t size = 0;
  std::int64_t written = 0;  // in the system's own units

  bool operator==(const FileStamp&) const = default;
};

/// The entries of `folder` without "." and "..", in the order of a name-sorted Windows file system
/// (by upper-cased name). A link counts as what it points to. Empty with `error` on failure.
std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error);

/// Reads a folder a few entries at a time, so that a large one holds up nobody. Owns the system's
/// handle.
class DirectoryReader {
 public:
  /// Nothing can be read if `error` is set.
  DirectoryReader(const std::filesystem::path& folder, std::error_code& error);
  ~DirectoryReader();
  DirectoryReader(DirectoryReader&&) noexcept;

  /// Appends up to `most` further entries without "." and "..", in no particular order; appends
  /// none at the end or on failure.
  void Read(std::size_t most, std::vector<DirectoryEntry>& entries, std::error_code& error);

 private:
  struct Search;
  std::unique_ptr<Search> search_;
};

/// What is known of `path`; links are followed.
EntryFacts InspectEntry(const std::filesystem::path& path, std::error_code& error);

FileStamp StampOf(const std::filesystem::path& path, std::error_code& error);

}  // namespace platform
