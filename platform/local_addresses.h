#pragma once

// The addresses at which other computers of the local network reach this one.

#include <string>
#include <vector>

namespace platform {

struct LocalAddress {
  std::string address;    // IPv4, as a text
  std::string interface;  // the names that the system has for it
  bool leadsOut = false;  // the interface through which this machine reaches other networks
};

/// The IPv4 addresses of all interfaces that are up, without loopback and link-local (169.254)
/// addresses, in the system's order. At most one interface leads out.
std::vector<LocalAddress> LocalAddresses();

}  // namespace platform
