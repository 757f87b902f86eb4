#pragma once

// A started FTP server in a program directory of its own, and a client for it.

#include <memory>
#include <string>
#include <string_view>

#include "ftp/ftp_server.h"
#include "platform/native_path.h"
#include "tests/support/server_fixture.h"

namespace test {

/// The reply before a listing or download.
inline constexpr const char* kSending = "150 Opening ASCII mode data connection for /bin/ls.\r\n";

/// The bytes of a transfer and the reply after it.
struct Transferred {
  std::string bytes;
  std::string after;
};

/// A control connection.
class FtpClient {
 public:
  explicit FtpClient(std::uint16_t port) : control_(std::make_unique<Client>(port)) {}

  /// Sends `line` and CR LF, and returns the reply.
  std::string Ask(std::string_view line) {
    Tell(line);
    return control_->ReceiveLine();
  }
  void Tell(std::string_view line) { control_->Send(std::string(line) + "\r\n"); }
  std::string Reply() { return control_->ReceiveLine(); }

  /// The port in a PASV reply; 0 in any other.
  static std::uint16_t PortOf(const std::string& reply);

  /// Sends PASV and connects to the port in the reply.
  std::unique_ptr<Client> OpenPassive() { return std::make_unique<Client>(PortOf(Ask("PASV"))); }

  /// Carries out a whole LIST or RETR.
  Transferred Fetch(std::string_view line);

  Client& Control() { return *control_; }

 private:
  std::unique_ptr<Client> control_;
};

/// The root is ftproot, the upload directory ftproot/up.
class FtpServerTest : public ServerFixture<ModFtp::FtpServer> {
 protected:
  FtpServerTest();

  void WriteSettings(std::string_view port, std::string_view uploadDir);
  std::uint16_t Port();

  /// A client that has read the greeting.
  FtpClient Connect();

  void Put(std::string_view name, std::string_view content) const {
    Home().Write("ftproot/" + std::string(name), content);
  }
};

}  // namespace test
