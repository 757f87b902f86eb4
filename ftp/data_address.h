#pragma once

// The addresses of data connections as PORT and PASV write them. Parses and formats only; opens
// nothing.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ModFtp {

/// The parts of PORT's argument. A part ends at a comma in second, third or fourth place. Without
/// one it is empty, and the next part is looked for in the same text.
struct PortArgument {
  std::array<std::string, 4> address;
  std::string high;
  std::string low;
};

/// None if the text is too short for the second port part's line end.
std::optional<PortArgument> CutPortArgument(std::string_view text);

/// `high` * 256 + `low` is the client's port, `high` + `slot` the server's. The arithmetic is that
/// of signed 16-bit integers, so client ports from 32768 on cannot be reached. None on overflow or
/// for a negative port.
struct ActivePorts {
  std::uint16_t remote = 0;
  std::uint16_t local = 0;
};
std::optional<ActivePorts> ComputeActivePorts(std::int16_t high, std::int16_t low, int slot);

/// "(192,168,0,5,4,37)." for a local address and the low byte of a passive port. The high byte is
/// always 4.
std::string PassiveAddress(std::string_view localAddress, int lowByte);

/// The lowest passive port.
inline constexpr std::uint16_t kPassivePortBase = 1024;

}  // namespace ModFtp
