#pragma once

// A blocking FTP client: a control connection, and one passive data connection at a time.

#include <cstdint>
#include <functional>
#include <string>

#include "bench/sockets.h"

namespace bench {

inline constexpr const char* kGuest = "anonymous";
inline constexpr const char* kGuestPassword = "x@y";

class FtpClient {
 public:
  /// Connects and reads the greeting.
  explicit FtpClient(std::uint16_t port);

  /// Sends a command and returns the last line of its reply; empty once the connection has ended.
  std::string Ask(const std::string& line);
  void Tell(const std::string& line);
  std::string Reply();

  /// As a guest, for binary transfers.
  void SignIn();

  Descriptor OpenPassive();

  /// Reads the two replies to a transfer; throws unless they say that it is done.
  void ExpectTransferred();

  /// The number of bytes, or lines, that a command sends, after its final reply.
  std::uint64_t Fetch(const std::string& line);
  std::uint64_t CountLines(const std::string& line);

  /// The command, with a data connection for `use`, which is closed afterwards; then its replies.
  void Transfer(const std::string& line, const std::function<void(int)>& use);

 private:
  std::string Line();

  Descriptor control_;
  std::string received_;
};

/// Sends that many bytes, in large pieces.
void SendMany(int connection, std::size_t bytes);

}  // namespace bench
