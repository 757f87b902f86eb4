#pragma once

// What can be said of bytes that are ASCII, whatever the character set of the rest.

#include <algorithm>
#include <string_view>

namespace platform {

/// Whether there is no other byte. Looks at all of them, since compilers make whole registers of
/// that.
constexpr bool IsAscii(std::string_view text) {
  unsigned char bits = 0;
  for (const char c : text) bits = static_cast<unsigned char>(bits | static_cast<unsigned char>(c));
  return bits < 0x80;
}

constexpr bool IsAsciiLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

constexpr char UpperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two texts are equal but for the case of ASCII letters.
constexpr bool EqualIgnoringAsciiCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
}

}  // namespace platform
