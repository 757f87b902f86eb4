#pragma once

// Texts of the settings as numbers and Booleans, by the rules that existing files rely on: blanks
// around a value do not count, neither does case.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// A decimal number, rounded to the nearest whole one (halves to the even one). None if the text is
/// no number or the result does not fit 16 bits with a sign: 40000 does not.
std::optional<std::int16_t> ToInt16(std::string_view text);

/// "True", "False" or a number, non-zero meaning true. None for anything else, the empty text too.
std::optional<bool> ToBoolean(std::string_view text);

/// "True" or "False".
std::string BooleanText(bool value);

/// "1" or "0", as the state of a check box is kept.
std::string CheckText(bool ticked);

}  // namespace text
