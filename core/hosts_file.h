#pragma once

// The system's hosts file: makes a domain name resolve to this machine, and tells the names of
// others. Entries are only appended; existing lines never change.

#include <map>
#include <string>
#include <string_view>

#include "core/service_environment.h"
#include "platform/system_folders.h"
#include "settings/program.h"

namespace core {

/// Where the system with that name (core/os_name.h) keeps the file; the system directory if the
/// name is unknown.
platform::HostsPlace HostsPlaceOf(std::string_view osName);

/// The path text of this system's hosts file.
std::string HostsFile();

/// Far larger than any list in use, such as one that blocks advertisers.
inline constexpr std::size_t kLargestHostsFile = std::size_t{16} << 20;

/// Ensures that `hostsFile` (a path text) has an active line with `address` and `domain`. False if
/// the file cannot be read or written; it is then left as it is, and callers go on. An empty
/// `domain` matches every active line with the address.
bool UpdateHostsFile(std::string_view hostsFile, std::string_view address, std::string_view domain);

/// Whether it has such a line. False if it cannot be read.
bool IsInHostsFile(std::string_view hostsFile, std::string_view address, std::string_view domain);

/// Adds the domain of a service that starts. An existing file that cannot be read is logged as an
/// error. Lacking the right to write is usual and not logged.
void EnterInHostsFile(const ServiceEnvironment& environment, std::string_view domain);

/// The first name of each address that the file names: what the system knows of other machines
/// without asking anybody. Empty if it cannot be read or is far larger than usual.
std::map<std::string, std::string> HostNames(std::string_view hostsFile);

}  // namespace core
