#pragma once

// Makes a domain name resolve to this machine: its entry in the system's hosts file. The file is
// only ever appended to; what stands in it is never changed.

#include <string>
#include <string_view>

#include "core/service_environment.h"
#include "platform/system_folders.h"
#include "settings/program.h"

namespace core {

/// Where a system of that name (core/os_name.h) keeps the file; a name that says nothing takes the
/// system directory.
platform::HostsPlace HostsPlaceOf(std::string_view osName);

/// This system's file as a path text.
std::string HostsFile();

/// No list of names that anybody uses, of advertisers to be blocked say, comes near this size.
inline constexpr std::size_t kLargestHostsFile = std::size_t{16} << 20;

/// Makes sure that `hostsFile` (a path text) has an active line with `address` and `domain`. True
/// if it has one now; a file that cannot be read or written stays as it is, gives false and stops
/// nothing. An empty `domain` is looked for like any other: every active line with the address
/// counts.
bool UpdateHostsFile(std::string_view hostsFile, std::string_view address, std::string_view domain);

/// The same for the domain of a service that starts. A file that is there and cannot be read is
/// told to the error log; that it cannot be written is usual, and is not.
void EnterInHostsFile(const ServiceEnvironment& environment, std::string_view domain);

}  // namespace core
