#include "platform/acceptor.h"

namespace platform {

void Acceptor::AsyncAccept(Handler handler) {
  acceptor_.async_accept(
      [handler = std::move(handler)](const asio::error_code& error, StreamSocket::Library socket) {
        std::vector<StreamSocket> accepted;
        if (!error) accepted.emplace_back(std::move(socket));
        handler(error, std::move(accepted));
      });
}

}  // namespace platform
