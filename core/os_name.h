#pragma once

// The name of the operating system, which decides where the hosts file is.

#include <string>

#include "platform/system_version.h"

namespace core {

/// The name for a version. Empty for a Windows version that is not in the table; "Windows 7" for
/// every 6.x from 6.1 on; "Unknown OS Version" if the system is not Windows.
std::string OsNameOf(const platform::SystemVersion& version);

/// The name of this system.
std::string GetOsName();

}  // namespace core
