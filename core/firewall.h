#pragma once

// The program's entry in the system's firewall.

#include "settings/program.h"

namespace modFirewall {

/// Adds the program to the firewall's list of allowed programs. Failure (no right, no such
/// firewall) is silent and has no other effect.
void AuthorizeInFirewall(const settings::Program& program);

}  // namespace modFirewall
