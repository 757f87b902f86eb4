#pragma once

// Blocking loopback sockets for measuring clients.

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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

/// Holds no descriptor if nothing listens there. Reading and sending fail after 30 seconds of
/// nothing.
Descriptor TryConnectTo(std::uint16_t port);

/// Throws if nothing listens there.
Descriptor ConnectTo(std::uint16_t port);

/// Gives up when the connection ends.
void SendAll(int connection, std::string_view bytes);

/// Reads to the end of the connection and returns the number of bytes.
std::uint64_t ReceiveAll(int connection);

/// Reads to the end of the connection and hands each piece to `take`.
template <class Take>
void ReceiveAll(int connection, const Take& take) {
  static thread_local std::vector<char> buffer(std::size_t{1} << 18);
  ssize_t count = 0;
  while ((count = recv(connection, buffer.data(), buffer.size(), 0)) > 0) {
    take(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
  }
}

}  // namespace bench
