#pragma once

// Opening things with the user's desktop.

#include <string>

namespace platform {

/// Opens a URL or a folder with the program that the desktop has for it, and returns at once. False
/// if no program could be started; what happens afterwards is not reported.
bool OpenWithShell(const std::string& target);

}  // namespace platform
