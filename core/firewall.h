#pragma once

// The program among those that the system's firewall lets through.

#include "settings/program.h"

namespace modFirewall {

/// Adds the program to the firewall's list. Where that is impossible (no right to, no such
/// firewall) the program runs on without it, and nothing is said.
void AuthorizeInFirewall(const settings::Program& program);

}  // namespace modFirewall
