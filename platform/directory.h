#pragma once

// Directory listings and the properties of an entry. Nothing here changes the file system.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
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
  std::chrono::system_clock::time_point created;  // birth time if known, else modification time
  std::chrono::system_clock::time_point modified;
};

/// Identifies a file together with its content: the stamp changes when the file is written or
/// replaced by another of the same name.
struct FileStamp {
  std::uint64_t id = 0;  // the file's number in its file system
  std::uint64_t size = 0;
  std::int64_t written = 0;  // modification time in the system's own units

  bool operator==(const FileStamp&) const = default;
};

/// The entries of `folder` without "." and "..", sorted by upper-cased name as Windows file systems
/// do. A link has the properties of its target. Empty with `error` set on failure.
std::vector<DirectoryEntry> ListDirectory(const std::filesystem::path& folder,
                                          std::error_code& error);

/// Reads a folder a few entries at a time, so that a large folder does not block the caller. Owns
/// the system's handle.
class DirectoryReader {
 public:
  /// If `error` is set, Read yields nothing.
  DirectoryReader(const std::filesystem::path& folder, std::error_code& error);
  ~DirectoryReader();
  DirectoryReader(DirectoryReader&&) noexcept;

  /// Appends up to `most` further entries without "." and "..", in no particular order. Appends
  /// nothing at the end of the folder or on failure.
  void Read(std::size_t most, std::vector<DirectoryEntry>& entries, std::error_code& error);

 private:
  struct Search;
  std::unique_ptr<Search> search_;
};

/// A folder that stays open, for looking at many of its entries: their names, as DirectoryReader
/// returns them, are looked up in it instead of from the root of the file system. Owns the system's
/// handle.
class OpenFolder {
 public:
  /// If `error` is set, it has no entries.
  OpenFolder(const std::filesystem::path& folder, std::error_code& error);
  ~OpenFolder();
  OpenFolder(OpenFolder&&) noexcept;

  /// The properties of an entry; of a link on Linux its own.
  EntryFacts Inspect(std::string_view name, std::error_code& error) const;

  /// As File::ReadableSize.
  std::uint64_t ReadableSize(std::string_view name, std::error_code& error) const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// The properties of `path`. Links are followed.
EntryFacts InspectEntry(const std::filesystem::path& path, std::error_code& error);

FileStamp StampOf(const std::filesystem::path& path, std::error_code& error);

}  // namespace platform
