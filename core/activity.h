#pragma once

// What goes on in a service, for whoever watches it: a picture of this moment, made on demand from
// what the connections know anyway. Nobody is told of changes.

#include <chrono>
#include <cstdint>
#include <string>
#include <system_error>

namespace core {

/// Bytes since the start of whatever is counted.
struct Traffic {
  std::uint64_t received = 0;
  std::uint64_t sent = 0;
};

/// What a connection is doing since Connection::Doing was called last.
struct Activity {
  std::string what;         // the request or command, "GET /a.htm"; empty before the first
  std::uint64_t total = 0;  // the bytes of a transfer whose size is known, else 0
  Traffic traffic;          // of this activity; what the system has yet to take counts
};

/// An open connection.
struct ConnectionReport {
  std::string protocol;  // "HTTP", "FTP", "SMTP" or "POP3"
  int slot = 0;
  std::string address;  // the client's
  std::chrono::system_clock::time_point since;
  Activity activity;
};

/// Why a service did not start.
struct StartFailure {
  std::error_code reason;
  std::int16_t port = 0;  // that was to be listened on; 0 if it did not come to that
  bool settings = false;  // it did not come to that because Server.ini cannot be used
};

}  // namespace core
