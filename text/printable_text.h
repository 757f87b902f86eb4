#pragma once

// Makes untrusted texts safe to show on one line of a log, a list or the window.

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace text {

inline constexpr std::size_t kAnyLength = std::numeric_limits<std::size_t>::max();

/// `text` as one line without hidden characters: controls, line separators and bidirectional marks
/// become "?". Bytes that are not UTF-8 are kept. A text longer than `most` bytes is cut there,
/// between two characters, and "…" is appended.
std::string Printable(std::string_view text, std::size_t most = kAnyLength);

}  // namespace text
