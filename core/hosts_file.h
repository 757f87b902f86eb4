#pragma once

// Makes a domain name resolve to this machine: its entry in the system's hosts file. The file is
// only ever appended to; what stands in it is never changed.

#include <string_view>

namespace core {

/// Makes sure that `hostsFile` (a path text) has an active line with `address` and `domain`. True
/// if it has one now; a file that cannot be written gives false and stops nothing.
bool AddHostsEntry(std::string_view hostsFile, std::string_view address, std::string_view domain);

}  // namespace core
