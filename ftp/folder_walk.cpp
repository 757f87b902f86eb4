#include "ftp/folder_walk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "net/handler_scope.h"
#include "net/turn.h"
#include "platform/text_case.h"
#include "text/path_text.h"

namespace ModFtp {
namespace {

using net::Task;
using platform::DirectoryEntry;

// Takes some milliseconds. Fewer and longer runs make better use of the processor's caches.
constexpr std::size_t kBatch = 2000;

// An estimate for a sorted entry with a name of usual length.
constexpr std::size_t kBytesPerEntry = 200;

// A sum in progress: the bytes added so far, and the folders still to be read.
struct Sum {
  Sum(const files::ClientFiles& clientFiles, std::shared_ptr<MemoryShare> share)
      : files(clientFiles), memory(std::move(share)) {}

  const files::ClientFiles& files;
  std::shared_ptr<MemoryShare> memory;
  std::int64_t bytes = 0;
  std::vector<std::string> folders;

  bool Fits() const { return bytes <= std::numeric_limits<std::int32_t>::max(); }
  // False if the entry cannot be inspected, or `memory` does not suffice to keep it for later.
  bool Add(const std::string& path, const DirectoryEntry& entry) {
    if (entry.isLink) return true;
    if (entry.isFolder) {
      folders.push_back(path);
      return memory->Take(sizeof(std::string) + path.size());
    }
    std::error_code error;
    bytes += static_cast<std::int64_t>(files.Inspect(path, error).size);
    return !error;
  }
};

// Reads the next batch; false at the end of the folder.
bool ReadBatch(platform::DirectoryReader& reader, std::vector<DirectoryEntry>& batch,
               std::error_code& error) {
  batch.clear();
  reader.Read(kBatch, batch, error);
  return !error && !batch.empty();
}

}  // namespace

void SortedEntries::Add(std::vector<DirectoryEntry> batch) {
  count_ += batch.size();
  Run run;
  run.reserve(batch.size());
  for (DirectoryEntry& entry : batch) {
    std::string key = platform::UpperCase(entry.name);
    run.push_back({std::move(key), std::move(entry)});
  }
  std::sort(run.begin(), run.end(), [](const Item& left, const Item& right) {
    return std::tie(left.key, left.entry.name) > std::tie(right.key, right.entry.name);
  });
  if (!run.empty()) heap_.push_back(runs_.size());
  runs_.push_back(std::move(run));
}

bool SortedEntries::ComesLater(std::size_t left, std::size_t right) const {
  const Item& a = runs_[left].back();
  const Item& b = runs_[right].back();
  return std::tie(a.key, a.entry.name) > std::tie(b.key, b.entry.name);
}

std::optional<DirectoryEntry> SortedEntries::Next() {
  const auto later = [this](std::size_t left, std::size_t right) {
    return ComesLater(left, right);
  };
  if (!std::exchange(ordered_, true)) std::make_heap(heap_.begin(), heap_.end(), later);
  if (heap_.empty()) return std::nullopt;
  std::pop_heap(heap_.begin(), heap_.end(), later);
  Run& run = runs_[heap_.back()];
  DirectoryEntry entry = std::move(run.back().entry);
  run.pop_back();
  if (run.empty()) {
    heap_.pop_back();
    Run().swap(run);  // to free all of them at the end would take long
  } else {
    std::push_heap(heap_.begin(), heap_.end(), later);
  }
  return entry;
}

Task<std::optional<SortedEntries>> ReadSorted(const files::ClientFiles& files, std::string folder,
                                              std::shared_ptr<MemoryShare> memory) {
  std::error_code error;
  platform::DirectoryReader reader = files.ReadFolder(folder, error);
  SortedEntries entries;
  std::vector<DirectoryEntry> batch;
  net::Turn turn;
  while (!error && ReadBatch(reader, batch, error)) {
    if (!memory->Take(batch.size() * kBytesPerEntry)) co_return std::nullopt;
    entries.Add(std::move(batch));
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
  }
  if (error) co_return std::nullopt;
  co_return std::move(entries);
}

Task<std::optional<std::int32_t>> AddUpFolder(const files::ClientFiles& files, std::string folder,
                                              std::shared_ptr<MemoryShare> memory) {
  Sum sum(files, std::move(memory));
  sum.folders.push_back(std::move(folder));
  net::Turn turn;
  while (!sum.folders.empty()) {
    const std::string parent = ModCommon::AddSlash(sum.folders.back());
    sum.folders.pop_back();
    std::error_code error;
    platform::DirectoryReader reader = files.ReadFolder(parent, error);
    std::vector<DirectoryEntry> batch;
    while (!error && ReadBatch(reader, batch, error)) {
      for (const DirectoryEntry& entry : batch) {
        if (!sum.Add(parent + entry.name, entry) || !sum.Fits()) co_return std::nullopt;
        if (!turn.IsOver()) continue;
        co_await net::YieldToEvents();
        turn.Renew();
      }
    }
    if (error) co_return std::nullopt;
  }
  co_return static_cast<std::int32_t>(sum.bytes);
}

}  // namespace ModFtp
