#include "web/http/validators.h"

#include <algorithm>
#include <array>
#include <cstdio>

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

}  // namespace

Validators::Validators(const platform::File& file)
    : written(std::chrono::floor<std::chrono::seconds>(file.WrittenWhenOpened())) {
  std::array<char, 64> text = {};
  std::snprintf(
      text.data(), text.size(), "\"%llx-%llx\"",
      static_cast<unsigned long long>(file.SizeWhenOpened()),
      static_cast<unsigned long long>(file.WrittenWhenOpened().time_since_epoch().count()));
  tag = text.data();
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
