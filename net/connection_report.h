#pragma once

// A snapshot of what a service's connections are doing, made on demand from what they keep anyway.
// There are no change notifications.

#include <chrono>
#include <cstdint>
#include <string>

namespace net {

/// Bytes since the start of whatever is counted.
struct Traffic {
  std::uint64_t received = 0;
  std::uint64_t sent = 0;
};

/// What a connection has been doing since the last call of Connection::Doing.
struct Activity {
  std::string what;         // the request or command, "GET /a.htm"; empty before the first
  std::uint64_t total = 0;  // the bytes of a transfer whose size is known, else 0
  Traffic traffic;          // of this activity, unsent bytes included
};

/// An open connection.
struct ConnectionReport {
  std::string protocol;  // "HTTP", "FTP", "SMTP" or "POP3"
  int slot = 0;
  std::string address;  // the client's
  std::chrono::system_clock::time_point since;
  Activity activity;
};

}  // namespace net
