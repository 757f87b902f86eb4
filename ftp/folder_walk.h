#pragma once

// Reads folders of any size and depth without blocking the event loop: every coroutine here yields
// every few milliseconds, so the folder may change while it is being read.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/client_files.h"
#include "ftp/memory_budget.h"
#include "net/task.h"
#include "platform/directory.h"

namespace ModFtp {

/// The entries of a folder, sorted by their upper-cased names. They are added in batches, in any
/// order; no single step takes time that grows with the folder.
class SortedEntries {
 public:
  /// Must not be called after the first Next.
  void Add(std::vector<platform::DirectoryEntry> batch);

  std::size_t Count() const { return count_; }

  /// The next entry, none after the last.
  std::optional<platform::DirectoryEntry> Next();

 private:
  struct Item {
    std::string key;
    platform::DirectoryEntry entry;
  };
  // Sorted in reverse, so that the first entry is removed from the end.
  using Run = std::vector<Item>;

  bool ComesLater(std::size_t left, std::size_t right) const;

  std::vector<Run> runs_;
  std::size_t count_ = 0;          // added
  std::vector<std::size_t> heap_;  // runs with entries left, the one with the first entry on top
  bool ordered_ = false;
};

/// All entries of `folder`, a path text. Takes what they need from `memory`. None if that does not
/// suffice or the folder cannot be read. `files` must outlive the task.
net::Task<std::optional<SortedEntries>> ReadSorted(const files::ClientFiles& files,
                                                   std::string folder,
                                                   std::shared_ptr<MemoryShare> memory);

/// The bytes of all files in `folder` and below. None if the sum exceeds a signed 32-bit integer or
/// something cannot be inspected. Does not follow links, nor `folder` if it is one.
net::Task<std::optional<std::int32_t>> AddUpFolder(const files::ClientFiles& files,
                                                   std::string folder,
                                                   std::shared_ptr<MemoryShare> memory);

}  // namespace ModFtp
