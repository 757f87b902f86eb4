#include "web/http/validators.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "text/strings.h"
#include "web/http/http_date.h"

namespace ModWeb {
namespace {

// Whether a list of tags has this one, weak or not, or is "*".
bool HasTag(std::string_view list, std::string_view tag) {
  if (list == "*") return true;
  while (!list.empty()) {
    const std::string_view item = list.substr(0, list.find(','));
    list.remove_prefix(std::min(item.size() + 1, list.size()));
    std::string_view known = text::TrimBlanks(item);
    if (known.starts_with("W/")) known.remove_prefix(2);
    if (known == tag) return true;
  }
  return false;
}

void AppendHex(std::string& text, std::uint64_t number) {
  std::array<char, 16> digits = {};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
  text.append(digits.data(), end);
}

}  // namespace

Validators::Validators(const platform::File& file)
    : tag("\""), written(std::chrono::floor<std::chrono::seconds>(file.WrittenWhenOpened())) {
  AppendHex(tag, file.SizeWhenOpened());
  tag += '-';
  AppendHex(tag, static_cast<std::uint64_t>(file.WrittenWhenOpened().time_since_epoch().count()));
  tag += '"';
}

bool IsKnown(const HttpRequest& request, const Validators& file) {
  const std::string& tags = request[HttpRequest::kIfNoneMatch];
  if (!tags.empty()) return HasTag(tags, file.tag);
  const auto since = ParseHttpDate(request[HttpRequest::kIfModifiedSince]);
  return since && file.written <= *since;
}

// Where a client insists on a version, it gets another one only as a whole.
bool AreRangesOf(const HttpRequest& request, const Validators& file) {
  const std::string& tags = request[HttpRequest::kIfMatch];
  if (!tags.empty() && !HasTag(tags, file.tag)) return false;
  const auto unmodified = ParseHttpDate(request[HttpRequest::kIfUnmodifiedSince]);
  if (tags.empty() && unmodified && file.written > *unmodified) return false;
  const std::string& version = request[HttpRequest::kIfRange];
  if (version.empty() || version == file.tag) return true;
  // A date tells versions apart only if it is exactly this one; a weak tag does not.
  return ParseHttpDate(version) == file.written;
}

}  // namespace ModWeb
