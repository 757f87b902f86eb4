#pragma once

// The system's firewall for incoming connections.

#include <string_view>
#include <system_error>

namespace platform {

/// Adds the program `image` (a full path text) under the title `name` to the programs that accept
/// connections from any address. Windows: uses the firewall's automation objects, which may be
/// missing. Linux: has no such list; succeeds.
std::error_code AuthorizeProgram(std::string_view image, std::string_view name);

/// What an ordinary user can find out about the firewall. Its rules are hidden from him on Linux.
struct FirewallState {
  enum class Kind {
    kNoneFound,
    kUfw,
    kFirewalld,
    kNftables,  // rules of the administrator's own
    kWindows,
  };

  Kind kind = Kind::kNoneFound;    // the one that is on
  bool admitsThisProgram = false;  // known on Windows only
};

/// Looks at files or asks the system, briefly.
FirewallState LookAtFirewall(std::string_view image);

}  // namespace platform
