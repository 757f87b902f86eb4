#pragma once

// Keeps the first entries of a folder, in the order of ComesFirst, of however many are added: in
// memory for twice as many, and in a time that is linear in what is added.

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "web/http/list_order.h"

namespace ModWeb {

class FirstEntries {
 public:
  explicit FirstEntries(std::size_t most) : most_(most) {}

  void Add(ListedEntry entry) {
    entries_.push_back(std::move(entry));
    if (entries_.size() >= 2 * most_) Cut();
  }

  /// What is kept, in no particular order. To be called once, at the end.
  std::vector<ListedEntry> Take() {
    if (entries_.size() > most_) Cut();
    return std::move(entries_);
  }

  /// Whether there were more.
  bool IsCut() const { return isCut_; }

 private:
  void Cut() {
    const auto end = entries_.begin() + static_cast<std::ptrdiff_t>(most_);
    std::nth_element(entries_.begin(), end, entries_.end(), ComesFirst);
    entries_.erase(end, entries_.end());
    isCut_ = true;
  }

  std::size_t most_;
  std::vector<ListedEntry> entries_;
  bool isCut_ = false;
};

}  // namespace ModWeb
