#pragma once

#include <filesystem>

#include "platform/firewall.h"

namespace platform {

/// The firewall that files under `root` ("/") say is on.
FirewallState::Kind FirewallIn(const std::filesystem::path& root);

}  // namespace platform
