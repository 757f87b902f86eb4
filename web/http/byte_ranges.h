#pragma once

// The field Range of a request: which bytes of a file the client wants.

#include <cstdint>
#include <string_view>
#include <vector>

namespace ModWeb {

struct ByteRange {
  std::uint64_t begin = 0;
  std::uint64_t size = 0;

  bool operator==(const ByteRange&) const = default;
};

struct WantedRanges {
  enum class Answer {
    kWhole,   // there is no range that counts
    kRanges,  // at least one, none of them empty
    kNone,    // ranges, all of them behind the end of the file
  };

  Answer answer = Answer::kWhole;
  std::vector<ByteRange> ranges = {};
};

/// The ranges in the order in which they are wanted. A malformed field does not count, and neither
/// does one that would cost more than the file: too many ranges, or more bytes than it has.
WantedRanges ParseRanges(std::string_view field, std::uint64_t fileSize);

}  // namespace ModWeb
