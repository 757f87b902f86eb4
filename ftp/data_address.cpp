#include "ftp/data_address.h"

#include <limits>

#include "ftp/command_text.h"

namespace ModFtp {
namespace {

// Removes the first part and its separator from `rest`.
std::string TakePart(std::string_view& rest, char separator) {
  constexpr std::size_t kLongestPart = 3;
  for (std::size_t length = 1; length <= kLongestPart && length < rest.size(); ++length) {
    if (rest[length] != separator) continue;
    const std::string part(rest.substr(0, length));
    rest.remove_prefix(length + 1);
    return part;
  }
  return {};
}

using Limits = std::numeric_limits<std::int16_t>;

bool Fits(int number) { return number >= Limits::min() && number <= Limits::max(); }

bool IsPort(int number) { return number >= 0 && Fits(number); }

}  // namespace

std::optional<PortArgument> CutPortArgument(std::string_view text) {
  std::string_view rest = FromPosition(text, kAfterFourLetters);
  PortArgument argument;
  for (std::string& part : argument.address) part = TakePart(rest, ',');
  argument.high = TakePart(rest, ',');
  const std::optional<std::string> low = WithoutLineEnd(rest);
  if (!low) return std::nullopt;
  argument.low = *low;
  return argument;
}

std::optional<ActivePorts> ComputeActivePorts(std::int16_t high, std::int16_t low, int slot) {
  const int highByte = high * 256;
  const int remote = highByte + low;
  const int local = high + slot;
  if (!Fits(highByte) || !IsPort(remote) || !IsPort(local)) return std::nullopt;
  return ActivePorts{static_cast<std::uint16_t>(remote), static_cast<std::uint16_t>(local)};
}

std::string PassiveAddress(std::string_view localAddress, int lowByte) {
  std::string address = "(";
  for (int i = 0; i < 3; ++i) address += TakePart(localAddress, '.') + ",";
  return address + std::string(localAddress) + ",4," + std::to_string(lowByte) + ").";
}

}  // namespace ModFtp
