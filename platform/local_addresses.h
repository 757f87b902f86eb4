#pragma once

// The addresses at which other computers of the local network reach this one.

#include <string>
#include <vector>

namespace platform {

/// The IPv4 addresses of all interfaces that are up, as texts, without loopback and link-local
/// (169.254) addresses.
std::vector<std::string> LocalAddresses();

}  // namespace platform
