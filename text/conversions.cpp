#include "text/conversions.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/text_case.h"
#include "text/strings.h"

namespace text {
namespace {

std::optional<double> ToNumber(std::string_view text) {
  text = TrimBlanks(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
  return number;
}

}  // namespace

std::optional<std::int16_t> ToInt16(std::string_view text) {
  using Limits = std::numeric_limits<std::int16_t>;
  const std::optional<double> number = ToNumber(text);
  if (!number) return std::nullopt;
  const double rounded = std::nearbyint(*number);
  if (rounded < Limits::min() || rounded > Limits::max()) return std::nullopt;
  return static_cast<std::int16_t>(rounded);
}

std::optional<bool> ToBoolean(std::string_view text) {
  const std::string_view trimmed = TrimBlanks(text);
  if (platform::EqualIgnoringCase(trimmed, "True")) return true;
  if (platform::EqualIgnoringCase(trimmed, "False")) return false;
  const std::optional<double> number = ToNumber(trimmed);
  if (!number) return std::nullopt;
  return *number != 0;
}

std::string BooleanText(bool value) { return value ? "True" : "False"; }

std::string CheckText(bool ticked) { return ticked ? "1" : "0"; }

}  // namespace text
