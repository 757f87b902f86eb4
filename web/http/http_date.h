#pragma once

// Dates in fields: "Sun, 06 Nov 1994 08:49:37 GMT".

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace ModWeb {

/// In UTC, from the year 0 on.
std::string HttpDate(std::chrono::sys_seconds time);

/// None if it is no date of that form, the only one that is still sent.
std::optional<std::chrono::sys_seconds> ParseHttpDate(std::string_view text);

}  // namespace ModWeb
