#include "bench/ftp_client.h"

#include <sys/socket.h>

#include <array>
#include <vector>

namespace bench {

FtpClient::FtpClient(std::uint16_t port) : control_(ConnectTo(port)) { Reply(); }

std::string FtpClient::Ask(const std::string& line) {
  Tell(line);
  return Reply();
}

void FtpClient::Tell(const std::string& line) {
  const std::string command = line + "\r\n";
  SendAll(control_.Number(), command);
}

std::string FtpClient::Reply() {
  std::size_t end = 0;
  std::array<char, 1024> buffer;
  while ((end = received_.find("\r\n")) == std::string::npos) {
    const ssize_t count = recv(control_.Number(), buffer.data(), buffer.size(), 0);
    if (count <= 0) return {};
    received_.append(buffer.data(), static_cast<std::size_t>(count));
  }
  std::string reply = received_.substr(0, end);
  received_.erase(0, end + 2);
  return reply;
}

Descriptor FtpClient::OpenPassive() {
  const std::string reply = Ask("PASV");
  const std::size_t low = reply.rfind(',');
  const std::size_t high = reply.rfind(',', low - 1);
  const int port = std::stoi(reply.substr(high + 1)) * 256 + std::stoi(reply.substr(low + 1));
  return ConnectTo(static_cast<std::uint16_t>(port));
}

std::uint64_t FtpClient::Fetch(const std::string& line) {
  std::uint64_t bytes = 0;
  {
    const Descriptor data = OpenPassive();
    Tell(line);
    bytes = ReceiveAll(data.Number());
  }
  Reply();
  Reply();
  return bytes;
}

void SendMany(int connection, std::size_t bytes) {
  const std::vector<char> piece(65536, 'u');
  for (std::size_t sent = 0; sent < bytes; sent += piece.size()) {
    SendAll(connection, {piece.data(), piece.size()});
  }
}

}  // namespace bench
