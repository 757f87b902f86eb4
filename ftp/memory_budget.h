#pragma once

// A bound on the memory that several users of one kind hold together.

#include <cstddef>

namespace ModFtp {

class MemoryBudget {
 public:
  explicit MemoryBudget(std::size_t bytes) : left_(bytes) {}

 private:
  friend class MemoryShare;

  std::size_t left_;
};

/// What one of them holds, given back with the object.
class MemoryShare {
 public:
  explicit MemoryShare(MemoryBudget& budget) : budget_(budget) {}
  ~MemoryShare() { budget_.left_ += held_; }
  MemoryShare(const MemoryShare&) = delete;
  MemoryShare& operator=(const MemoryShare&) = delete;

  /// False if there is not so much left; nothing is taken then.
  bool Take(std::size_t bytes) {
    if (bytes > budget_.left_) return false;
    budget_.left_ -= bytes;
    held_ += bytes;
    return true;
  }

  /// Gives back all but `bytes`.
  void KeepOnly(std::size_t bytes) {
    if (bytes >= held_) return;
    budget_.left_ += held_ - bytes;
    held_ = bytes;
  }

 private:
  MemoryBudget& budget_;
  std::size_t held_ = 0;
};

}  // namespace ModFtp
