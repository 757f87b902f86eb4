#pragma once

// A TCP listener of the system.

#include <asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/stream_socket.h"

namespace platform {

class Acceptor {
 public:
  /// Those that could be accepted at once, or none with an error.
  using Handler = std::function<void(const asio::error_code& error, std::vector<StreamSocket>)>;

  explicit Acceptor(const asio::any_io_executor& executor) : acceptor_(executor) {}

  /// Listens on `port` (0: one that the system chooses) of all local IPv4 addresses.
  void Open(std::uint16_t port, asio::error_code& error);
  void Close();

  /// 0 while it does not listen.
  std::uint16_t Port() const;

  /// Calls `handler` once, as soon as there is a connection to accept; after Close with the error
  /// operation_aborted. The handler keeps the acceptor alive.
  void AsyncAccept(Handler handler);

 private:
  void AdaptBatch(std::size_t accepted);

  asio::ip::tcp::acceptor acceptor_;

  // How many are asked for at a time. One too many costs a call in vain, so more are tried for only
  // after as many have come several times in a row.
  std::size_t batch_ = 1;
  int fullBatches_ = 0;
};

}  // namespace platform
