#include "platform/acceptor.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace platform {
namespace {

constexpr std::size_t kMostAtOnce = 16;  // bounds the time between two turns of the loop
constexpr int kFullBatchesToGrow = 4;

}  // namespace

void Acceptor::AdaptBatch(std::size_t accepted) {
  if (accepted < batch_) {
    batch_ = std::max<std::size_t>(accepted, 1);
    fullBatches_ = 0;
  } else if (++fullBatches_ == kFullBatchesToGrow) {
    batch_ = std::min(2 * batch_, kMostAtOnce);
    fullBatches_ = 0;
  }
}

void Acceptor::AsyncAccept(Handler handler) {
  acceptor_.async_wait(asio::socket_base::wait_read, [this, handler = std::move(handler)](
                                                         const asio::error_code& failed) {
    asio::error_code error = failed;
    std::vector<StreamSocket> accepted;
    while (!error && accepted.size() < batch_) {
      sockaddr_in peer = {};
      socklen_t size = sizeof(peer);
      const int socket = accept4(acceptor_.native_handle(), reinterpret_cast<sockaddr*>(&peer),
                                 &size, SOCK_CLOEXEC | SOCK_NONBLOCK);
      if (socket < 0) {
        error.assign(errno, asio::error::get_system_category());
      } else {
        accepted.emplace_back(acceptor_.get_executor(), static_cast<NativeSocket>(socket),
                              asio::ip::address_v4(ntohl(peer.sin_addr.s_addr)));
      }
    }
    AdaptBatch(accepted.size());
    // Connections beyond the batch make the next wait return at once.
    const bool emptied = error == asio::error::would_block || !accepted.empty();
    handler(emptied ? asio::error_code() : error, std::move(accepted));
  });
}

}  // namespace platform
