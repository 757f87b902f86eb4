#pragma once

// The IPv4 networks that this machine is part of, as its interfaces say at the moment.

#include <cstdint>
#include <vector>

namespace platform {

struct LocalNetwork {
  std::uint32_t address;  // this machine's, in host byte order
  std::uint32_t mask;
};

/// Of all interfaces that are up, loopback included.
std::vector<LocalNetwork> LocalNetworks();

}  // namespace platform
