#include "bench/mail_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace bench {

MailClient::MailClient(std::uint16_t port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int now = 1;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &now, sizeof(now));
  connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address));
  ReadTo("\r\n");
}

MailClient::~MailClient() { close(socket_); }

bool MailClient::Ask(std::string_view bytes, std::string_view end) {
  if (send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0) return false;
  return ReadTo(end);
}

bool MailClient::ReadTo(std::string_view end) {
  std::array<char, 65536> buffer;
  std::string tail;
  while (!tail.ends_with(end)) {
    const ssize_t count = recv(socket_, buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    tail.append(buffer.data(), static_cast<std::size_t>(count));
    if (tail.size() > end.size()) tail.erase(0, tail.size() - end.size());
  }
  return true;
}

}  // namespace bench
