#pragma once

// Looks for the first text in a multipart whose own boundary counts no more, because two others
// stand before it in the message. The usual message with formatted text, a picture and an
// attachment has its text three levels down.
//
// It follows the parts as deep as they go, and back up as far as it remembers boundaries: the
// innermost ones, so that neither time nor memory grows with the depth.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mail/part_header.h"
#include "mail/stretch.h"

namespace ModMail {

/// A line of a message: where it stands, and where what is in front of it ends, less a line end.
struct LinePlace {
  std::uint64_t begin = 0;
  std::uint64_t next = 0;
  std::uint64_t endInFront = 0;
};

class NestedText {
 public:
  /// A multipart begins whose parts `boundary` parts.
  void Enter(std::string_view boundary);

  /// A line within it.
  void TakeLine(std::string_view line, const LinePlace& place);

  /// The multipart ends, and what is in it ends at `end`.
  void Leave(std::uint64_t end);

  const std::optional<Stretch>& Found() const { return found_; }

 private:
  enum class Region { kBetween, kHeader, kText };

  bool TakeDelimiter(std::string_view line, const LinePlace& place);
  void EndHeader(std::uint64_t next);
  void EndPart(std::uint64_t end);
  void Remember(std::string_view boundary);

  std::vector<std::string> boundaries_;  // the innermost one last
  Region region_ = Region::kBetween;
  PartHeader header_;
  std::uint64_t textBegin_ = 0;
  std::optional<Stretch> found_;
};

}  // namespace ModMail
