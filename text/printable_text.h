#pragma once

// Texts that came from outside, made fit for one line of a log, a list or the window.

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace text {

inline constexpr std::size_t kAnyLength = std::numeric_limits<std::size_t>::max();

/// `text` as one line that shows all of itself: control characters, line separators and the marks
/// that turn the direction of writing become "?". Bytes that are no UTF-8 stay as they are. What
/// has more than `most` bytes is cut there, between two characters, and ends in "…".
std::string Printable(std::string_view text, std::size_t most = kAnyLength);

}  // namespace text
