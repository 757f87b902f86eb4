#pragma once

// A TCP client that blocks, for tests. Whatever it waits for ends after some seconds: what has come
// by then is returned, so that a server that does not answer fails a test and never hangs it.

#include <asio/error.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <string>
#include <string_view>

namespace test {

class Client {
 public:
  /// Connects to a port of this machine.
  explicit Client(std::uint16_t port);

  void Send(std::string_view bytes);

  /// Everything up to the end of the connection.
  std::string ReceiveAll();

  /// Up to and with the next CR LF.
  std::string ReceiveLine();

  /// Exactly `count` bytes, fewer if the connection ends or falls silent.
  std::string Receive(std::size_t count);

  /// Whether the server ends the connection, with or without an error, without sending more.
  bool SeesEnd();

  /// Whether the last reading ended in an error rather than in an orderly end.
  bool WasReset() const { return error_ && error_ != asio::error::eof; }

  void ShutSending();
  void Close();
  /// Ends the connection with a reset.
  void Reset();

 private:
  void Wait();
  std::string Take(std::size_t count);
  auto Note() {
    return [this](const asio::error_code& error, std::size_t) { error_ = error; };
  }

  asio::io_context context_;
  asio::ip::tcp::socket socket_{context_};
  asio::error_code error_;  // of the last reading
  std::string received_;
};

}  // namespace test
