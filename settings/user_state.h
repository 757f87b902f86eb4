#pragma once

// What the program remembers for a user from one run to the next and no setting says: where the
// window was, which tip comes next. In window.ini of the per-user state directory, so that several
// users of one program directory do not disturb each other. Forgetting it does no harm.

#include <optional>
#include <string_view>

namespace settings {

std::optional<int> Remembered(std::string_view section, std::string_view key);
void Remember(std::string_view section, std::string_view key, int value);

}  // namespace settings
