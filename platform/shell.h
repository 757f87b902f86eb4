#pragma once

// Handing something to the user's desktop.

#include <string>

namespace platform {

/// Opens a URL or a folder with whatever the user's system opens it with, and returns at once. What
/// becomes of it is between the system and the user; false only if nothing could be started.
bool OpenWithShell(const std::string& target);

}  // namespace platform
