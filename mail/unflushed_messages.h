#pragma once

// The files that parts of messages were appended to and that may not be on the disk yet.
//
// A flush of many bytes is done on another thread. Meanwhile the files count as unflushed, so
// nobody relies on a flush that is not over.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "files/pending_flush.h"
#include "settings/program.h"

namespace ModMail {

class UnflushedMessages {
 public:
  /// The files that one flush is about.
  class Batch {
   public:
    /// Takes as long as the disk. Uses nothing but the batch.
    void Flush();

   private:
    friend class UnflushedMessages;

    struct Entry {
      std::string path;
      std::size_t bytes;
      std::error_code error;
      files::PendingFlush file;
    };
    std::vector<Entry> entries_;
  };

  explicit UnflushedMessages(const settings::Program& program) : program_(program) {}

  void Add(const std::string& path, std::size_t bytes);

  /// The file has been flushed or removed.
  void Forget(const std::string& path);

  /// Whether a batch has failed with the file since this was last asked. Then the file is not what
  /// was appended to it.
  bool WasLost(const std::string& path) { return lost_.erase(path) > 0; }

  /// Whether they should be flushed.
  bool AreMany() const;

  /// Whether nothing more should be appended before they are.
  bool AreTooMany() const;

  Batch Open() const;

  /// `batch` has been flushed: what was appended by the time it was opened is on the disk. Logs
  /// errors; false if there were any.
  bool Close(const Batch& batch);

  /// Flushes all at once, while everything else waits. False if a file could not be flushed.
  bool Flush();

 private:
  const settings::Program& program_;
  std::map<std::string, std::size_t> bytes_;  // by path
  std::size_t total_ = 0;                     // of bytes
  std::set<std::string> lost_;
};

}  // namespace ModMail
