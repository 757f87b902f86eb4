#include "bench/sockets.h"

#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

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
  const sockaddr_in address = Loopback(port);
  if (connect(connection.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) !=
      0) {
    connection.Close();
  }
  return connection;
}

Descriptor ConnectTo(std::uint16_t port) {
  Descriptor connection = TryConnectTo(port);
  if (connection.Number() < 0) {
    std::perror("connect");
    std::exit(1);
  }
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
  std::array<char, 65536> buffer;
  std::uint64_t received = 0;
  ssize_t count = 0;
  while ((count = recv(connection, buffer.data(), buffer.size(), 0)) > 0) {
    received += static_cast<std::uint64_t>(count);
  }
  return received;
}

}  // namespace bench
