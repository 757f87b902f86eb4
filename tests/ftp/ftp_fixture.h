#pragma once

// A started FTP server in a program directory of its own, and a client for it.

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "ftp/ftp_server.h"
#include "tests/support/server_fixture.h"

namespace test {

/// The reply before a listing or download.
inline constexpr const char* kSending = "150 Opening ASCII mode data connection for /bin/ls.\r\n";

/// A control connection; its greeting has been read.
class FtpClient : public Client {
 public:
  explicit FtpClient(std::uint16_t port) : Client(port) { ReceiveLine(); }

  /// Sends `line` and CR LF, and returns the reply.
  std::string Ask(std::string_view line) {
    Send(std::string(line) + "\r\n");
    return ReceiveLine();
  }

  /// Sends PASV; the port in the reply.
  std::uint16_t AskForPort() {
    const std::string reply = Ask("PASV");
    return static_cast<std::uint16_t>(1024 + std::stoi(reply.substr(reply.rfind(',') + 1)));
  }
  std::unique_ptr<Client> OpenPassive() { return std::make_unique<Client>(AskForPort()); }

  /// Carries out a whole LIST or RETR; the bytes, and then the reply after them.
  std::string Fetch(std::string_view line) {
    const auto data = OpenPassive();
    Ask(line);
    const std::string bytes = data->ReceiveAll();
    data->Close();
    return bytes + ReceiveLine();
  }
};

/// The root is ftproot, the upload directory ftproot/up.
class FtpServerTest : public ServerFixture<ModFtp::FtpServer> {
 protected:
  FtpServerTest() {
    const std::filesystem::path root = Home().Path("ftproot").make_preferred();
    std::filesystem::create_directories(root / "up");
    Home().Write("Server.ini",
                 "[FtpServer Options]\r\nFtpPort=0\r\nFtpServer Root=" + root.string() +
                     "\r\nFtpServer UploadDir=" + (root / "up").string() + "\r\n");
    StartServer();
  }

  FtpClient Connect() {
    std::uint16_t port = 0;
    OnLoop([&] { port = TheServer().ListeningPort(); });
    return FtpClient(port);
  }

  void Put(std::string_view name, std::string_view content) const {
    Home().Write("ftproot/" + std::string(name), content);
  }
};

}  // namespace test
