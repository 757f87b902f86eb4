#pragma once

// Local date and time in the format of the logs.

#include <chrono>
#include <string>

namespace text {

using WallTime = std::chrono::system_clock::time_point;

/// "YYYY-MM-DD HH:MM:SS" in the local time zone.
std::string DateTimeText(WallTime time);

}  // namespace text
