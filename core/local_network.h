#pragma once

// What this machine is called by others in the local network: which of its addresses they most
// likely reach, and whether they know its domain names.

#include <string>
#include <string_view>
#include <vector>

#include "platform/local_addresses.h"

namespace core {

/// The addresses, the one that others most likely reach first. Physical networks come before
/// those of virtual machines and containers, these before tunnels, unless one leads out.
std::vector<std::string> LikelyFirst(std::vector<platform::LocalAddress> addresses);

/// Whether a client at `address` is this machine itself. `own`: its addresses in the network.
bool IsThisMachine(std::string_view address, const std::vector<std::string>& own);

/// A remark on a domain name that others may not know, in a few words; empty if nothing is known
/// against it. `hostsFile`: a path text.
std::string DomainRemark(const std::string& domain, std::string_view hostsFile);

}  // namespace core
