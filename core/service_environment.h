#pragma once

// What every service is given to run with.

#include <string>
#include <string_view>

#include "settings/program.h"

namespace net {
class EventLoop;
}

namespace core {

/// The files are path texts; the references outlive the service.
struct ServiceEnvironment {
  const settings::Program& program;
  net::EventLoop& loop;
  std::string hostsFile;
};

/// The domain name of every service before the user has set one: the addresses shown work at once.
inline constexpr std::string_view kDefaultDomain = "localhost";

}  // namespace core
