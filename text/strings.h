#pragma once

// Small operations on strings that the standard library lacks.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// Whether `c` is an ASCII control character.
constexpr bool IsControl(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F;
}

/// How many characters at the beginning of `text` are of that kind.
template <class IsKind>
std::size_t PrefixLength(std::string_view text, IsKind isKind) {
  const auto end = std::find_if_not(text.begin(), text.end(), isKind);
  return static_cast<std::size_t>(end - text.begin());
}

/// `text` without blanks at either end (spaces only, as in all file formats of the program).
std::string_view TrimBlanks(std::string_view text);
std::string_view TrimTrailingBlanks(std::string_view text);

/// `text` with every `from` replaced by `to`.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// The texts in order, with `between` between any two.
std::string Joined(const std::vector<std::string>& texts, std::string_view between);

}  // namespace text
