
#include "platform/acceptor.h"

namespace platform {
namespace {

constexpr int kFixedWindow = 512 << 10;

}  // namespace

void Acceptor::Open(std::uint16_t port, ReceiveWindow window, asio::error_code& error) {
  using asio::ip::tcp;
  acceptor_.open(tcp::v4(), error);
  if (error) return;
  const auto native = static_cast<NativeSocket>(acceptor_.native_handle());
  ClaimAddress(native);
  PrepareForTraffic(native);
  if (window == ReceiveWindow::kFixed) {
    // Connections inherit it. The system may set less.
    acceptor_.set_option(asio::socket_base::receive_buffer_size(kFixedWindow), error);
  }
  if (!error) acceptor_.bind({tcp::v4(), port}, error);
  if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
  if (!error) acceptor_.non_blocking(true, error);
}

void Acceptor::Close() {
  asio::error_code ignored;
  acceptor_.close(ignored);
}

std::uint16_t Acceptor::Port() const {
  asio::error_code error;
  return acceptor_.local_endpoint(error).port();
}

}  // namespace platform
