#pragma once

// A message as the QUIT behind it leaves it to be unpacked. There need not be such a file.

#include <compare>
#include <string>

namespace ModMail {

struct ReceivedMessage {
  int number = 0;
  std::string user;
  std::string mailRoot;  // a path text

  auto operator<=>(const ReceivedMessage&) const = default;
};

/// The path text of its file.
std::string PathOf(const ReceivedMessage& message);

}  // namespace ModMail
