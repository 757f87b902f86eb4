#pragma once

// Settings values converted to numbers and Booleans. Blanks around a value and its case are
// ignored; existing files rely on this.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// A decimal number, rounded to the nearest integer (halves to even). None if the text is not a
/// number or the result does not fit a signed 16-bit integer: 40000 does not.
std::optional<std::int16_t> ToInt16(std::string_view text);

/// "True", "False" or a number, non-zero meaning true. None for anything else, including the empty
/// text.
std::optional<bool> ToBoolean(std::string_view text);

/// "True" or "False".
std::string BooleanText(bool value);

/// "1" or "0", the stored state of a check box.
std::string CheckText(bool ticked);

}  // namespace text
