#pragma once

// An FTP client that blocks: a control connection, and passive data connections one at a time.

#include <cstdint>
#include <string>

#include "bench/sockets.h"

namespace bench {

class FtpClient {
 public:
  /// Connects and reads the greeting.
  explicit FtpClient(std::uint16_t port);

  /// Sends a command and returns the line that answers it; empty once the connection has ended.
  std::string Ask(const std::string& line);
  void Tell(const std::string& line);
  std::string Reply();

  Descriptor OpenPassive();

  /// Bytes received; the replies are waited for.
  std::uint64_t Fetch(const std::string& line);

 private:
  Descriptor control_;
  std::string received_;
};

/// Sends so many bytes, in large pieces.
void SendMany(int connection, std::size_t bytes);

}  // namespace bench
