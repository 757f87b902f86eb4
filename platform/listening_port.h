#pragma once

// Diagnosis of a port that cannot be listened on: why, and which program has it.

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

/// Classifies the error of a failed listen.
ListenTrouble TroubleOf(const std::error_code& error);

struct PortOwner {
  std::uint32_t process = 0;
  std::string program;  // the name that the system displays
};

/// The process that listens on a TCP port, if there is one and the system reveals it. Linux reveals
/// only the user's own processes.
std::optional<PortOwner> WhoListensOn(std::uint16_t port);

}  // namespace platform
