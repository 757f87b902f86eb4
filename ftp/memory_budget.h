#pragma once

// A limit on the memory that several holders use together. It only counts: a holder takes bytes
// from the budget before it allocates them.

#include <cstddef>

namespace ModFtp {

class MemoryBudget {
 public:
  explicit MemoryBudget(std::size_t bytes) : left_(bytes) {}

 private:
  friend class MemoryShare;

  std::size_t left_;
};

/// What one holder has taken; its destructor returns it. The budget must outlive it.
class MemoryShare {
 public:
  explicit MemoryShare(MemoryBudget& budget) : budget_(budget) {}
  ~MemoryShare() { budget_.left_ += held_; }
  MemoryShare(const MemoryShare&) = delete;
  MemoryShare& operator=(const MemoryShare&) = delete;

  /// False, and takes nothing, if less than `bytes` is left.
  bool Take(std::size_t bytes) {
    if (bytes > budget_.left_) return false;
    budget_.left_ -= bytes;
    held_ += bytes;
    return true;
  }

  /// Returns all but `bytes`.
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
