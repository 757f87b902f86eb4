#include "web/http/byte_ranges.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/ascii.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

using Answer = WantedRanges::Answer;

constexpr std::size_t kMostRanges = 32;

std::optional<std::uint64_t> ToNumber(std::string_view digits) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc::result_out_of_range) return UINT64_MAX;
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

// "first-last", "first-" or "-length". False if it is none of these. A range that is not in the
// file at all is not added.
bool AddRange(std::string_view text, std::uint64_t fileSize, std::vector<ByteRange>& ranges) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) return false;
  const std::string_view firstText = text.substr(0, dash);
  const std::string_view lastText = text.substr(dash + 1);
  const auto first = ToNumber(firstText);
  const auto last = ToNumber(lastText);
  if ((!first && !firstText.empty()) || (!last && !lastText.empty())) return false;
  if (!first) {
    if (!last) return false;
    const std::uint64_t size = std::min(*last, fileSize);
    if (size > 0) ranges.push_back({fileSize - size, size});
    return true;
  }
  if (last && *last < *first) return false;
  if (*first >= fileSize) return true;
  const std::uint64_t end = last ? std::min(*last, fileSize - 1) : fileSize - 1;
  ranges.push_back({*first, end - *first + 1});
  return true;
}

}  // namespace

WantedRanges ParseRanges(std::string_view field, std::uint64_t fileSize) {
  constexpr std::string_view kUnit = "bytes=";
  if (!platform::EqualIgnoringAsciiCase(field.substr(0, kUnit.size()), kUnit)) return {};
  std::string_view rest = field.substr(kUnit.size());
  WantedRanges wanted;
  std::size_t count = 0;
  bool hasAny = false;
  for (bool isLast = false; !isLast;) {
    const std::size_t comma = rest.find(',');
    isLast = comma == std::string_view::npos;
    const std::string_view text = text::TrimBlanks(rest.substr(0, comma));
    if (!isLast) rest.remove_prefix(comma + 1);
    if (++count > kMostRanges) return {};
    if (text.empty()) continue;
    hasAny = true;
    if (!AddRange(text, fileSize, wanted.ranges)) return {};
  }
  if (!hasAny) return {};
  std::uint64_t bytes = 0;
  for (const ByteRange& range : wanted.ranges) {
    bytes += range.size;
    if (bytes > fileSize) return {};
  }
  wanted.answer = wanted.ranges.empty() ? Answer::kNone : Answer::kRanges;
  return wanted;
}

}  // namespace ModWeb
