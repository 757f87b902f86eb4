#pragma once

// Why the system refuses to let a port be listened on, and which program has it.

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

namespace platform {

enum class ListenTrouble {
  kPortTaken,
  kNoRight,  // ports below 1024 on Linux
  kOther,
};

/// What the error of a failed listen means.
ListenTrouble TroubleOf(const std::error_code& error);

struct PortOwner {
  std::uint32_t process = 0;
  std::string program;  // its name as the system shows it
};

/// The process that listens on a TCP port. None if nobody does, or if the system does not tell: on
/// Linux it tells of the user's own processes only.
std::optional<PortOwner> WhoListensOn(std::uint16_t port);

}  // namespace platform
