#pragma once

// How the other computers of the local network reach this one.

#include <string>
#include <vector>

namespace platform {

/// The IPv4 addresses of this machine's interfaces that are up, as texts, without the loopback's
/// and those that a machine gives itself where nobody assigns it one (169.254).
std::vector<std::string> LocalAddresses();

}  // namespace platform
