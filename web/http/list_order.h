#pragma once

// The order of a folder's list, which visitors choose by links.

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModWeb {

struct ListedEntry {
  std::string key;   // the name in upper case
  std::string name;  // UTF-8, or bytes that are none
  bool isFolder = false;
  bool isLink = false;
  std::uint64_t size = 0;
  std::chrono::system_clock::time_point modified = {};
};

/// Folders first, then by name without regard to case.
bool ComesFirst(const ListedEntry& left, const ListedEntry& right);

struct ListOrder {
  enum class By { kName, kSize, kDate };
  By by = By::kName;
  bool isDescending = false;

  /// Whether `left` comes before `right`. Folders come first in any case; what is equal otherwise
  /// is in the order of its names.
  bool operator()(const ListedEntry& left, const ListedEntry& right) const;

  bool operator==(const ListOrder&) const = default;
};

/// From a query as received, "sort=size&order=desc". Anything else in it is ignored.
ListOrder ParseOrder(std::string_view query);

/// The query that asks for `order`.
std::string OrderQuery(const ListOrder& order);

}  // namespace ModWeb
