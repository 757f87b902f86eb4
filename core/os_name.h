#pragma once

// The operating system's name, by which it is decided where the hosts file is.

#include <string>

#include "platform/system_version.h"

namespace core {

/// The name of a version. Empty for a Windows that is not in the table, and every 6.x from 6.1 on
/// is "Windows 7"; "Unknown OS Version" for a system that is no Windows.
std::string OsNameOf(const platform::SystemVersion& version);

/// The name of this system.
std::string GetOsName();

}  // namespace core
