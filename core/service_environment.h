#pragma once

// What every service needs to run.

#include <string>
#include <string_view>

#include "settings/program.h"

namespace net {
class EventLoop;
}

namespace core {

class Protection;

/// The references must outlive the service. `hostsFile` is a path text.
struct ServiceEnvironment {
  const settings::Program& program;
  net::EventLoop& loop;
  std::string hostsFile;
  Protection& protection;
};

/// The domain name of every service until the user sets one, so that the addresses shown work at
/// once.
inline constexpr std::string_view kDefaultDomain = "localhost";

}  // namespace core
