#pragma once

// Addresses of data connections as texts.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ModFtp {

/// What PORT names. The parts are found by looking for a comma at the second, third and fourth
/// character only; one without a comma in reach is empty and takes nothing from the rest.
struct PortArgument {
  std::array<std::string, 4> address;
  std::string high;
  std::string low;
};

/// None if the text ends before the second port part's line end.
std::optional<PortArgument> CutPortArgument(std::string_view text);

/// `high` times 256 plus `low` and `high` plus `slot`, in numbers of 16 bits with a sign, as which
/// they are kept: a port from 32768 on cannot be had. None if a product or sum does not fit, or a
/// port is negative.
struct ActivePorts {
  std::uint16_t remote = 0;
  std::uint16_t local = 0;
};
std::optional<ActivePorts> ComputeActivePorts(std::int16_t high, std::int16_t low, int slot);

/// "(192,168,0,5,4,37)." for a local address and the low byte of a passive port, whose high byte is
/// always 4.
std::string PassiveAddress(std::string_view localAddress, int lowByte);

/// The lowest passive port.
inline constexpr std::uint16_t kPassivePortBase = 1024;

}  // namespace ModFtp
