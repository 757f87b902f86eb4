#pragma once

// What the program remembers between runs for a user apart from the settings: the window's place,
// the next tip, which notices are wanted, how much of the error log was seen. It is kept in
// window.ini in the per-user state directory, so that several users can share a program directory.
// Losing it does no harm.

#include <optional>
#include <string_view>

namespace settings {

std::optional<int> Remembered(std::string_view section, std::string_view key);
void Remember(std::string_view section, std::string_view key, int value);

/// Whether the user wants to be told at once when a file or a message has come.
bool WantsNotices();
void SetWantsNotices(bool wanted);

}  // namespace settings
