#include "web/http/list_order.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace ModWeb {
namespace {

constexpr std::array<std::string_view, 3> kNames = {"name", "size", "date"};  // as in ListOrder::By

void Apply(std::string_view parameter, ListOrder& order) {
  if (parameter == "order=asc") order.isDescending = false;
  if (parameter == "order=desc") order.isDescending = true;
  constexpr std::string_view kSort = "sort=";
  if (!parameter.starts_with(kSort)) return;
  const auto* const name = std::find(kNames.begin(), kNames.end(), parameter.substr(kSort.size()));
  if (name != kNames.end()) order.by = static_cast<ListOrder::By>(name - kNames.begin());
}

}  // namespace

bool ComesFirst(const ListedEntry& left, const ListedEntry& right) {
  return std::tie(right.isFolder, left.key, left.name) <
         std::tie(left.isFolder, right.key, right.name);
}

bool ListOrder::operator()(const ListedEntry& left, const ListedEntry& right) const {
  if (left.isFolder != right.isFolder) return left.isFolder;
  const ListedEntry& first = isDescending ? right : left;
  const ListedEntry& second = isDescending ? left : right;
  if (by == By::kSize && first.size != second.size) return first.size < second.size;
  if (by == By::kDate && first.modified != second.modified) return first.modified < second.modified;
  return by == By::kName ? ComesFirst(first, second) : ComesFirst(left, right);
}

ListOrder ParseOrder(std::string_view query) {
  ListOrder order;
  while (!query.empty()) {
    const std::string_view parameter = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(parameter.size() + 1, query.size()));
    Apply(parameter, order);
  }
  return order;
}

std::string OrderQuery(const ListOrder& order) {
  const auto name = std::string(kNames.at(static_cast<std::size_t>(order.by)));
  return "?sort=" + name + "&order=" + (order.isDescending ? "desc" : "asc");
}

}  // namespace ModWeb
