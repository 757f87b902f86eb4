#pragma once

// A started FTP server in a program directory of its own, and a client that speaks its protocol.

#include <memory>
#include <string>
#include <string_view>

#include "ftp/ftp_server.h"
#include "platform/native_path.h"
#include "tests/support/server_fixture.h"

namespace test {

/// What is said before and after transfers.
inline constexpr const char* kSending = "150 Opening ASCII mode data connection for /bin/ls.\r\n";
inline constexpr const char* kRefused = "550 无访问权，不能上传文件！ \r\n";

/// The replies that come before and after the bytes of a transfer, and these.
struct Transferred {
  std::string before;
  std::string bytes;
  std::string after;
};

/// Bytes that show it if a piece is missing, doubled or out of place.
std::string Content(std::size_t size);

/// A control connection.
class FtpClient {
 public:
  explicit FtpClient(std::uint16_t port) : control_(std::make_unique<Client>(port)) {}

  std::string Greeting() { return control_->ReceiveLine(); }

  /// Sends `line` and CR LF; the reply.
  std::string Ask(std::string_view line) {
    Tell(line);
    return control_->ReceiveLine();
  }
  void Tell(std::string_view line) { control_->Send(std::string(line) + "\r\n"); }
  std::string Reply() { return control_->ReceiveLine(); }

  /// Whether the server says nothing for a moment.
  bool HearsNothing() { return control_->ReceiveFor(std::chrono::milliseconds(150)).empty(); }

  /// The port of a PASV reply; 0 if it is none.
  static std::uint16_t PortOf(const std::string& reply);

  /// PASV, and a connection to the port that it names.
  std::unique_ptr<Client> OpenPassive() { return std::make_unique<Client>(PortOf(Ask("PASV"))); }

  /// A whole LIST or RETR.
  Transferred Fetch(std::string_view line);

  /// A whole STOR; `after` is all that is said if it is refused.
  Transferred Store(std::string_view name, std::string_view content);

  Client& Control() { return *control_; }

 private:
  std::unique_ptr<Client> control_;
};

/// ftproot is the root, ftproot/up the upload directory.
class FtpServerTest : public ServerFixture<ModFtp::FtpServer> {
 protected:
  FtpServerTest();

  void WriteSettings(std::string_view port, std::string_view uploadDir);
  std::uint16_t Port();

  /// A client that has read the greeting.
  FtpClient Connect();

  /// The root and the upload directory as path texts.
  std::string Root() const { return Home().Text("ftproot"); }
  std::string UploadDir() const { return Home().Text("ftproot") + "\\up"; }

  std::string File(std::string_view name) const {
    return Home().Read("ftproot/" + std::string(name));
  }
  bool Has(std::string_view name) const { return Home().Has("ftproot/" + std::string(name)); }
  void Put(std::string_view name, std::string_view content) const {
    Home().Write("ftproot/" + std::string(name), content);
  }
};

}  // namespace test
