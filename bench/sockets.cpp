#include "bench/sockets.h"

#include <netinet/tcp.h>
#include <sys/time.h>
#include <unistd.h>

#include <string>
#include <utility>

#include "bench/failure.h"

namespace bench {

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    Close();
    number_ = std::exchange(other.number_, -1);
  }
  return *this;
}

void Descriptor::Close() {
  if (number_ >= 0) close(std::exchange(number_, -1));
}

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

Descriptor TryConnectTo(std::uint16_t port) {
  Descriptor connection(socket(AF_INET, SOCK_STREAM, 0));
  const int on = 1;
  setsockopt(connection.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
  const timeval patience = {.tv_sec = 30, .tv_usec = 0};
  setsockopt(connection.Number(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
  setsockopt(connection.Number(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof(patience));
  const sockaddr_in address = Loopback(port);
  if (connect(connection.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) !=
      0) {
    connection.Close();
  }
  return connection;
}

Descriptor ConnectTo(std::uint16_t port) {
  Descriptor connection = TryConnectTo(port);
  Expect(connection.Number() >= 0, "nothing listens on port " + std::to_string(port));
  return connection;
}

void SendAll(int connection, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::uint64_t ReceiveAll(int connection) {
  std::uint64_t received = 0;
  ReceiveAll(connection, [&](std::string_view piece) { received += piece.size(); });
  return received;
}

}  // namespace bench
