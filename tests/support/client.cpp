#include "tests/support/client.h"

#include <algorithm>
#include <asio/buffer.hpp>
#include <asio/completion_condition.hpp>
#include <asio/read.hpp>
#include <asio/read_until.hpp>
#include <asio/write.hpp>
#include <chrono>
#include <utility>

namespace test {
namespace {

using asio::ip::tcp;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::chrono::seconds kPatience{10};

}  // namespace

Client::Client(std::uint16_t port) {
  socket_.connect({asio::ip::address_v4::loopback(), port}, error_);
}

void Client::Send(std::string_view bytes) {
  asio::async_write(socket_, asio::buffer(bytes), [](const asio::error_code&, std::size_t) {});
  Wait();
}

std::string Client::ReceiveAll() {
  asio::async_read(socket_, asio::dynamic_buffer(received_), Note());
  Wait();
  return std::exchange(received_, {});
}

std::string Client::ReceiveLine() {
  asio::async_read_until(socket_, asio::dynamic_buffer(received_), kLineEnd, Note());
  Wait();
  return Take(std::min(received_.find(kLineEnd), received_.size()) + kLineEnd.size());
}

std::string Client::Receive(std::size_t count) {
  const std::size_t missing = count - std::min(count, received_.size());
  asio::async_read(socket_, asio::dynamic_buffer(received_), asio::transfer_at_least(missing),
                   Note());
  Wait();
  return Take(count);
}

bool Client::SeesEnd() {
  received_ = Receive(1) + received_;
  return received_.empty() && error_ && error_ != asio::error::operation_aborted;
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
  Close();
}

void Client::Wait() {
  context_.restart();
  context_.run_for(kPatience);
  asio::error_code ignored;
  socket_.cancel(ignored);
  context_.restart();
  context_.run();
}

std::string Client::Take(std::size_t count) {
  std::string bytes = received_.substr(0, count);
  received_.erase(0, bytes.size());
  return bytes;
}

}  // namespace test
