#pragma once

// Whether the program starts when the user logs in: a value in the registry's Run key, named after
// the executable. On Linux, where nobody reads that key, an autostart entry of the desktop is kept
// beside it (platform/login_entry.h).

#include <string>
#include <string_view>

#include "settings/program.h"

namespace settings {

/// The value is not empty and the system will act on it.
bool StartsWithSystem(const Program& program);

/// Turning it off leaves the value there with an empty text. False if the system refuses, which
/// needs no more than the user's lack of rights.
bool SetStartsWithSystem(const Program& program, bool starts);

/// The operating system as the registry names it, in upper case; empty if it does not.
std::string SystemVersionText();

/// Whether a program of that system starts by itself only once it is registered as a service.
bool NeedsRegistrationAsService(std::string_view versionText);

}  // namespace settings
