#pragma once

// The structure of UTF-8: where characters begin and end. It does not validate (text/code_page.h
// does): bytes that are not UTF-8 pass as characters of some length.

#include <cstddef>
#include <string_view>

namespace text {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Whether `c` is a byte of a character other than its first.
constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The end of the character that begins at the position `begin` of `text`.
constexpr std::size_t CharacterEnd(std::string_view text, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < text.size() && IsContinuation(text[end])) ++end;
  return end;
}

/// `text` without a byte order mark at its beginning.
constexpr std::string_view WithoutByteOrderMark(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text;
}

}  // namespace text
