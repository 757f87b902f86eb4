#include "bench/ftp_client.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <vector>

#include "bench/failure.h"

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
  std::string line = Line();
  if (line.size() < 4 || line[3] != '-') return line;
  const std::string last = line.substr(0, 3) + " ";
  while (!line.empty() && !line.starts_with(last)) line = Line();
  return line;
}

std::string FtpClient::Line() {
  std::size_t end = 0;
  std::array<char, 1024> buffer;
  while ((end = received_.find("\r\n")) == std::string::npos) {
    const ssize_t count = recv(control_.Number(), buffer.data(), buffer.size(), 0);
    if (count <= 0) return {};
    received_.append(buffer.data(), static_cast<std::size_t>(count));
  }
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 2);
  return line;
}

void FtpClient::SignIn() {
  Ask(std::string("USER ") + kGuest);
  const std::string reply = Ask(std::string("PASS ") + kGuestPassword);
  Expect(reply.starts_with("2"), "FTP: no sign-in: " + reply);
  Ask("TYPE I");
}

void FtpClient::ExpectTransferred() {
  for (const char* code : {"1", "2"}) {
    const std::string reply = Reply();
    Expect(reply.starts_with(code), "FTP: a transfer failed: " + reply);
  }
}

Descriptor FtpClient::OpenPassive() {
  const std::string reply = Ask("PASV");
  Expect(reply.starts_with("227"), "FTP: no data connection: " + reply);
  const std::size_t low = reply.rfind(',');
  const std::size_t high = reply.rfind(',', low - 1);
  const int port = std::stoi(reply.substr(high + 1)) * 256 + std::stoi(reply.substr(low + 1));
  return ConnectTo(static_cast<std::uint16_t>(port));
}

std::uint64_t FtpClient::Fetch(const std::string& line) {
  std::uint64_t bytes = 0;
  Transfer(line, [&](int data) { bytes = ReceiveAll(data); });
  return bytes;
}

std::uint64_t FtpClient::CountLines(const std::string& line) {
  std::uint64_t lines = 0;
  Transfer(line, [&](int data) {
    ReceiveAll(data, [&](std::string_view piece) {
      lines += static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n'));
    });
  });
  return lines;
}

void FtpClient::Transfer(const std::string& line, const std::function<void(int)>& use) {
  {
    const Descriptor data = OpenPassive();
    Tell(line);
    use(data.Number());
  }
  ExpectTransferred();
}

void SendMany(int connection, std::size_t bytes) {
  const std::vector<char> piece(65536, 'u');
  for (std::size_t sent = 0; sent < bytes; sent += piece.size()) {
    SendAll(connection, {piece.data(), piece.size()});
  }
}

}  // namespace bench
