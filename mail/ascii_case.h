#pragma once

// Protocol words and header names, whose case does not count. ASCII letters only, whatever the
// user's language.

#include <string_view>

#include "platform/ascii.h"

namespace ModMail {

using platform::UpperAscii;

constexpr bool EqualAscii(std::string_view left, std::string_view right) {
  return platform::EqualIgnoringAsciiCase(left, right);
}

constexpr bool StartsWithAscii(std::string_view text, std::string_view prefix) {
  return EqualAscii(text.substr(0, prefix.size()), prefix);
}

constexpr std::size_t FindAscii(std::string_view text, std::string_view what) {
  for (std::size_t i = 0; i + what.size() <= text.size(); ++i) {
    // Nearly always told by the first one.
    if (UpperAscii(text[i]) != UpperAscii(what[0])) continue;
    if (EqualAscii(text.substr(i, what.size()), what)) return i;
  }
  return std::string_view::npos;
}

}  // namespace ModMail
