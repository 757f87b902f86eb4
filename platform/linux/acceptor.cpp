#include "platform/acceptor.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace platform {
namespace {

constexpr std::size_t kMostAtOnce = 16;  // then others get their turn

}  // namespace

void Acceptor::AsyncAccept(Handler handler) {
  acceptor_.async_wait(asio::socket_base::wait_read, [this, handler = std::move(handler)](
                                                         const asio::error_code& failed) {
    asio::error_code error = failed;
    std::vector<StreamSocket> accepted;
    while (!error && accepted.size() < kMostAtOnce) {
      const int socket = accept4(acceptor_.native_handle(), nullptr, nullptr, SOCK_CLOEXEC);
      if (socket < 0) {
        error.assign(errno, asio::error::get_system_category());
      } else {
        accepted.emplace_back(acceptor_.get_executor(), static_cast<NativeSocket>(socket));
      }
    }
    const bool emptied = error == asio::error::would_block || !accepted.empty();
    handler(emptied ? asio::error_code() : error, std::move(accepted));
  });
}

}  // namespace platform
