#pragma once

// A blocking FTP client: a control connection, and one passive data connection at a time.

#include <cstdint>
#include <string>

#include "bench/sockets.h"

namespace bench {

class FtpClient {
 public:
  /// Connects and reads the greeting.
  explicit FtpClient(std::uint16_t port);

  /// Sends a command and returns its one-line reply; empty once the connection has ended.
  std::string Ask(const std::string& line);
  void Tell(const std::string& line);
  std::string Reply();

  Descriptor OpenPassive();

  /// Returns the number of bytes received, after the final reply.
  std::uint64_t Fetch(const std::string& line);

 private:
  Descriptor control_;
  std::string received_;
};

/// Sends that many bytes, in large pieces.
void SendMany(int connection, std::size_t bytes);

}  // namespace bench
