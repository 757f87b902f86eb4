#include "tests/ftp/ftp_fixture.h"

#include <filesystem>

namespace test {

std::uint16_t FtpClient::PortOf(const std::string& reply) {
  const std::size_t low = reply.rfind(',');
  if (!reply.starts_with("227 (") || low == std::string::npos) return 0;
  return static_cast<std::uint16_t>(1024 + std::stoi(reply.substr(low + 1)));
}

Transferred FtpClient::Fetch(std::string_view line) {
  const auto data = OpenPassive();
  Ask(line);
  std::string bytes = data->ReceiveAll();
  data->Close();
  return {std::move(bytes), Reply()};
}

FtpServerTest::FtpServerTest() {
  std::filesystem::create_directories(Home().Path("ftproot/up"));
  WriteSettings("0", Home().Path("ftproot/up").make_preferred().string());
  StartServer();
}

void FtpServerTest::WriteSettings(std::string_view port, std::string_view uploadDir) {
  Home().Write(
      "Server.ini",
      "[FtpServer Options]\r\nFtpServer Root=" + Home().Path("ftproot").make_preferred().string() +
          "\r\nFtpPort=" + std::string(port) +
          "\r\nDNS=localhost\r\nFtpServer UploadDir=" + std::string(uploadDir) + "\r\n");
}

std::uint16_t FtpServerTest::Port() {
  std::uint16_t port = 0;
  OnLoop([&] { port = TheServer().ListeningPort(); });
  return port;
}

FtpClient FtpServerTest::Connect() {
  FtpClient client(Port());
  client.Reply();
  return client;
}

}  // namespace test
