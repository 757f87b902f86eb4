#pragma once

// Finds the first text in a multipart whose own boundary is ignored because two others precede it
// in the message. The usual message with formatted text, a picture and an attachment has its text
// three levels down.
//
// It follows parts to any depth but remembers only the innermost boundaries, so it finds its way
// back up no further than those. Neither time nor memory grows with the depth.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mail/part_header.h"
#include "mail/stretch.h"

namespace ModMail {

/// The position of a line in a message.
struct LinePlace {
  std::uint64_t begin = 0;
  std::uint64_t next = 0;
  std::uint64_t endInFront = 0;  // where the text before it ends, without its line end
};

class NestedText {
 public:
  /// A multipart begins, whose parts are separated by `boundary`.
  void Enter(std::string_view boundary);

  /// A line within it.
  void TakeLine(std::string_view line, const LinePlace& place);

  /// The multipart ends, its content at `end`.
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
