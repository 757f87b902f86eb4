#pragma once

// A message that a QUIT leaves to be unpacked. Its file need not exist.

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
