#pragma once

// Reading folders of any size and depth without holding up anybody: every coroutine here lets other
// events run every few milliseconds, so what it reads may change under it.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ftp/memory_budget.h"
#include "net/task.h"
#include "platform/directory.h"

namespace ModFtp {

/// How long a handler has had the thread for itself.
class Turn {
 public:
  bool IsOver() const { return Clock::now() - begin_ >= kLength; }
  /// To be called after others had theirs.
  void Renew() { begin_ = Clock::now(); }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kLength{2};

  Clock::time_point begin_ = Clock::now();
};

/// The entries of a folder in the order of their upper-cased names. Takes them in as they come and
/// hands them out sorted, with no single step that grows with the folder.
class SortedEntries {
 public:
  /// Takes in a batch. Not after the first Next.
  void Add(std::vector<platform::DirectoryEntry> batch);

  std::size_t Count() const { return count_; }

  /// The next entry, none after the last.
  std::optional<platform::DirectoryEntry> Next();

 private:
  struct Item {
    std::string key;
    platform::DirectoryEntry entry;
  };
  // Sorted backwards, so that the first one is taken off the end.
  using Run = std::vector<Item>;

  bool ComesLater(std::size_t left, std::size_t right) const;

  std::vector<Run> runs_;
  std::size_t count_ = 0;          // taken in
  std::vector<std::size_t> heap_;  // runs that are not used up, the one with the first entry on top
  bool ordered_ = false;
};

/// All entries of `folder`, a path text. None if it cannot be read, or if `memory` does not
/// suffice, of which it takes what the entries need.
net::Task<std::optional<SortedEntries>> ReadSorted(std::string folder,
                                                   std::shared_ptr<MemoryShare> memory);

/// The bytes of all files in `folder` and below, as far as they are no more than a 32-bit number
/// with a sign holds; none if they are more or something cannot be looked at. Links are not
/// followed, neither below `folder` nor if it is one itself.
net::Task<std::optional<std::int32_t>> AddUpFolder(std::string folder,
                                                   std::shared_ptr<MemoryShare> memory);

}  // namespace ModFtp
