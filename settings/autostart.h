#pragma once

// Whether the program starts when the user logs in: a value in the registry's Run key, named after
// the executable. Nothing on Linux reads that key, so a desktop autostart entry is kept in step
// with it there (platform/login_entry.h).

#include <string>
#include <string_view>

#include "settings/program.h"

namespace settings {

/// Whether the value is not empty and the system will act on it.
bool StartsWithSystem(const Program& program);

/// Turning it off sets the value to the empty text. False if the system refuses, for instance
/// because the user lacks the right.
bool SetStartsWithSystem(const Program& program, bool starts);

/// The name of the operating system in the registry, in upper case; empty if there is none.
std::string SystemVersionText();

/// Whether programs start by themselves on that system only once registered as a service.
bool NeedsRegistrationAsService(std::string_view versionText);

}  // namespace settings
