#include "tests/support/client.h"

#include <array>
#include <asio/buffer.hpp>
#include <asio/write.hpp>
#include <utility>

namespace test {

namespace {

using asio::ip::tcp;

}  // namespace

Client::Client(std::uint16_t port) {
  asio::error_code error;
  socket_.connect({asio::ip::address_v4::loopback(), port}, error);
  connected_ = !error;
}

std::uint16_t Client::LocalPort() const {
  asio::error_code error;
  return socket_.local_endpoint(error).port();
}

void Client::Send(std::string_view bytes) {
  asio::async_write(socket_, asio::buffer(bytes), [](const asio::error_code&, std::size_t) {});
  context_.restart();
  context_.run_for(kPatience);
}

std::string Client::ReceiveAll() {
  while (ReadSome(kPatience)) {
  }
  return std::exchange(received_, {});
}

std::string Client::ReceiveLine() {
  while (received_.find("\r\n") == std::string::npos && ReadSome(kPatience)) {
  }
  const std::size_t end = received_.find("\r\n");
  return Receive(end == std::string::npos ? received_.size() : end + 2);
}

std::string Client::Receive(std::size_t count) {
  while (received_.size() < count && ReadSome(kPatience)) {
  }
  std::string bytes = received_.substr(0, count);
  received_.erase(0, bytes.size());
  return bytes;
}

std::string Client::ReceiveFor(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) {
    ReadSome(std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now()));
    if (ended_) break;
  }
  return std::exchange(received_, {});
}

bool Client::SeesEnd() {
  if (received_.empty()) ReadSome(kPatience);
  return ended_ && received_.empty();
}

void Client::ShutSending() {
  asio::error_code ignored;
  socket_.shutdown(tcp::socket::shutdown_send, ignored);
}

void Client::Close() {
  asio::error_code ignored;
  socket_.close(ignored);
}

void Client::Reset() {
  asio::error_code ignored;
  socket_.set_option(asio::socket_base::linger(true, 0), ignored);
  socket_.close(ignored);
}

// False once nothing more has come in time or the connection has ended.
bool Client::ReadSome(std::chrono::milliseconds time) {
  if (ended_ || !socket_.is_open()) return false;
  std::array<char, 65536> buffer;
  std::size_t count = 0;
  bool answered = false;
  asio::error_code error;
  socket_.async_read_some(asio::buffer(buffer),
                          [&](const asio::error_code& failure, std::size_t read) {
                            answered = true;
                            error = failure;
                            count = read;
                          });
  context_.restart();
  context_.run_for(time);
  if (!answered) {
    socket_.cancel();
    context_.restart();
    context_.run();
  }
  if (error == asio::error::operation_aborted) return false;
  ended_ = static_cast<bool>(error);
  reset_ = ended_ && error != asio::error::eof;
  received_.append(buffer.data(), count);
  return !ended_;
}

std::string Fetch(std::uint16_t port, std::string_view request) {
  Client client(port);
  client.Send(request);
  return client.ReceiveAll();
}

bool Accepts(std::uint16_t port) { return Client(port).IsConnected(); }

}  // namespace test
