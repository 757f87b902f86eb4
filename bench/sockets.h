#pragma once

// Blocking sockets on this machine, for clients that measure.

#include <netinet/in.h>

#include <cstdint>
#include <string_view>

namespace bench {

/// A descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number_; }
  void Close();

 private:
  int number_;
};

sockaddr_in Loopback(std::uint16_t port);

/// Without a number if there is nobody to connect to.
Descriptor TryConnectTo(std::uint16_t port);

/// Ends the program if there is nobody to connect to.
Descriptor ConnectTo(std::uint16_t port);

/// Gives up when the connection ends.
void SendAll(int connection, std::string_view bytes);

/// Reads to the end of the connection and returns how much came.
std::uint64_t ReceiveAll(int connection);

}  // namespace bench
