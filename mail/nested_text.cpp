#include "mail/nested_text.h"

#include <algorithm>

namespace ModMail {
namespace {

constexpr std::size_t kMostBoundaries = 16;
constexpr std::size_t kLongestBoundary = 1000;

}  // namespace

void NestedText::Enter(std::string_view boundary) {
  if (!found_) Remember(boundary);
}

void NestedText::TakeLine(std::string_view line, const LinePlace& place) {
  if (boundaries_.empty() || TakeDelimiter(line, place)) return;
  if (region_ != Region::kHeader) return;
  header_.Add(line);
  if (WithoutLineEnd(line).empty()) EndHeader(place.next);
}

void NestedText::Leave(std::uint64_t end) {
  EndPart(end);
  boundaries_.clear();
  region_ = Region::kBetween;
}

// Tries the innermost boundary first; an outer one ends everything that it contains.
bool NestedText::TakeDelimiter(std::string_view line, const LinePlace& place) {
  if (!line.starts_with("--")) return false;
  for (std::size_t level = boundaries_.size(); level > 0; --level) {
    const Delimiter delimiter = DelimiterOf(line, boundaries_[level - 1]);
    if (delimiter == Delimiter::kNone) continue;
    const bool isClosing = delimiter == Delimiter::kClosing;
    EndPart(place.endInFront);
    header_.Clear();
    boundaries_.resize(found_ ? 0 : isClosing ? level - 1 : level);
    region_ = isClosing ? Region::kBetween : Region::kHeader;
    return true;
  }
  return false;
}

void NestedText::EndHeader(std::uint64_t next) {
  const bool goesDeeper = header_.IsMultipart();
  region_ = goesDeeper ? Region::kBetween : Region::kText;
  textBegin_ = next;
  if (goesDeeper) Remember(header_.Boundary());
}

void NestedText::EndPart(std::uint64_t end) {
  if (found_ || region_ != Region::kText) return;
  if (!header_.IsAttachment() && header_.IsText()) {
    found_ = Stretch{textBegin_, std::max(textBegin_, end)};
  }
}

void NestedText::Remember(std::string_view boundary) {
  if (boundary.empty() || boundary.size() > kLongestBoundary) return;
  if (boundaries_.size() == kMostBoundaries) boundaries_.erase(boundaries_.begin());
  boundaries_.emplace_back(boundary);
}

}  // namespace ModMail
