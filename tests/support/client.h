#pragma once

// A TCP client that blocks, for tests. Whatever it waits for ends after some seconds: what has come
// by then is returned, so that a server that does not answer fails a test and never hangs it.

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <chrono>
#include <string>
#include <string_view>

namespace test {

class Client {
 public:
  /// Connects to a port of this machine.
  explicit Client(std::uint16_t port);

  static constexpr std::chrono::seconds kPatience{10};

  bool IsConnected() const { return connected_; }
  std::uint16_t LocalPort() const;

  void Send(std::string_view bytes);

  /// Everything up to the end of the connection.
  std::string ReceiveAll();

  /// Up to and with the next CR LF.
  std::string ReceiveLine();

  /// Exactly `count` bytes, fewer if the connection ends or falls silent.
  std::string Receive(std::size_t count);

  /// What comes within a short time; to see that nothing comes.
  std::string ReceiveFor(std::chrono::milliseconds time);

  /// Whether the server ends the connection, with or without an error, without sending more.
  bool SeesEnd();

  /// Whether the last reading ended in an error rather than in an orderly end.
  bool WasReset() const { return reset_; }

  void ShutSending();
  void Close();
  /// Ends the connection with a reset.
  void Reset();

 private:
  bool ReadSome(std::chrono::milliseconds time);

  asio::io_context context_;
  asio::ip::tcp::socket socket_{context_};
  bool connected_ = false;
  bool ended_ = false;
  bool reset_ = false;
  std::string received_;
};

/// Sends `request` on a connection of its own and returns everything up to its end.
std::string Fetch(std::uint16_t port, std::string_view request);

/// Whether a connection to `port` is accepted.
bool Accepts(std::uint16_t port);

}  // namespace test
