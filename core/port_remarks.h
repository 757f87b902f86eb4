#pragma once

// What the window says about ports that are typed or changed. Loading a port that cannot be used is
// the services' business (settings/settings_table.h); these texts only announce it.

#include <optional>
#include <string>
#include <string_view>

#include "core/service.h"

namespace core {

inline constexpr const char* kPortRange = "1 到 32767 的数字";

/// What happens if `typed` is saved as a port; none if it can be used. `kept`: the port that the
/// service then keeps; none if it does not start at all.
std::optional<std::string> PortComplaint(std::string_view typed, std::optional<int> kept);

/// That the service listens on other ports after a restart; empty if it is stopped, or listens on
/// the ports of its settings already. A port 0 in the settings stands for any.
std::string RestartNote(ServiceKind kind, const Service& service);

}  // namespace core
