#include "bench/mail_client.h"

#include <array>

namespace bench {

MailClient::MailClient(std::uint16_t port) : connection_(ConnectTo(port)) { ReadTo("\r\n"); }

bool MailClient::Ask(std::string_view bytes, std::string_view end) {
  SendAll(connection_.Number(), bytes);
  return ReadTo(end);
}

bool MailClient::ReadTo(std::string_view end) {
  std::array<char, 65536> buffer;
  std::string tail;
  char first = '\0';
  replyBytes_ = 0;
  while (!tail.ends_with(end)) {
    const ssize_t count = recv(connection_.Number(), buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    replyBytes_ += static_cast<std::size_t>(count);
    if (first == '\0') first = buffer[0];
    // An error has one line, whatever the end of a reply should be.
    if (first == '4' || first == '5' || first == '-') return false;
    tail.append(buffer.data(), static_cast<std::size_t>(count));
    if (tail.size() > end.size()) tail.erase(0, tail.size() - end.size());
  }
  return true;
}

}  // namespace bench
