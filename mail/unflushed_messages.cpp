#include "mail/unflushed_messages.h"

#include <algorithm>

#include "files/missing.h"
#include "platform/system_message.h"

namespace ModMail {
namespace {

constexpr std::size_t kManyBytes = 4U << 20;
constexpr std::size_t kTooManyBytes = 8U << 20;
constexpr std::size_t kManyFiles = 16;

}  // namespace

void UnflushedMessages::Batch::Flush() {
  for (Entry& entry : entries_) {
    if (!entry.error) entry.error = entry.file.Flush();
  }
}

void UnflushedMessages::Add(const std::string& path, std::size_t bytes) {
  bytes_[path] += bytes;
  total_ += bytes;
}

void UnflushedMessages::Forget(const std::string& path) {
  lost_.erase(path);
  const auto found = bytes_.find(path);
  if (found == bytes_.end()) return;
  total_ -= found->second;
  bytes_.erase(found);
}

bool UnflushedMessages::AreMany() const {
  return total_ > kManyBytes || bytes_.size() > kManyFiles;
}

bool UnflushedMessages::AreTooMany() const {
  return total_ > kTooManyBytes || bytes_.size() > kManyFiles;
}

UnflushedMessages::Batch UnflushedMessages::Open() const {
  Batch batch;
  batch.entries_.reserve(bytes_.size());
  for (const auto& [path, bytes] : bytes_) {
    std::error_code error;
    files::PendingFlush file(path, error);
    batch.entries_.push_back({path, bytes, error, std::move(file)});
  }
  return batch;
}

bool UnflushedMessages::Close(const Batch& batch) {
  bool isFlushed = true;
  for (const Batch::Entry& entry : batch.entries_) {
    const auto found = bytes_.find(entry.path);
    const bool isForgotten = found == bytes_.end();
    if (!isForgotten) {
      const std::size_t flushed = std::min(entry.bytes, found->second);
      total_ -= flushed;
      found->second -= flushed;
      if (found->second == 0) bytes_.erase(found);
    }
    // A message that was deleted meanwhile needs no flush.
    if (!entry.error || files::IsMissing(entry.error)) continue;
    program_.errors.LogError(entry.path + ": " + platform::SystemMessage(entry.error));
    if (!isForgotten) lost_.insert(entry.path);
    isFlushed = false;
  }
  return isFlushed;
}

bool UnflushedMessages::Flush() {
  Batch batch = Open();
  batch.Flush();
  return Close(batch);
}

}  // namespace ModMail
