#pragma once

// Blocking loopback sockets for measuring clients.

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

/// Holds no descriptor if nothing listens there.
Descriptor TryConnectTo(std::uint16_t port);

/// Exits the program if nothing listens there.
Descriptor ConnectTo(std::uint16_t port);

/// Gives up when the connection ends.
void SendAll(int connection, std::string_view bytes);

/// Reads to the end of the connection and returns the number of bytes.
std::uint64_t ReceiveAll(int connection);

}  // namespace bench
