#pragma once

// A listening TCP socket that accepts connections in batches. It does not limit how many are open.

#include <asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/stream_socket.h"

namespace platform {

/// How much a client may send ahead of what is read. kAutoTuned: the system widens the window for a
/// fast client, to many MiB. kFixed: half a MiB, which can be handled within a few milliseconds.
enum class ReceiveWindow { kAutoTuned, kFixed };

class Acceptor {
 public:
  /// Gets the connections that could be accepted without waiting, or none and an error.
  using Handler = std::function<void(const asio::error_code& error, std::vector<StreamSocket>)>;

  explicit Acceptor(const asio::any_io_executor& executor) : acceptor_(executor) {}

  /// Listens on `port` of all local IPv4 addresses. With port 0 the system chooses a free one.
  void Open(std::uint16_t port, ReceiveWindow window, asio::error_code& error);
  void Close();

  /// The port listened on; 0 if not listening.
  std::uint16_t Port() const;

  /// Calls `handler` once, as soon as there is a connection to accept, or with operation_aborted
  /// after Close. The handler must keep the acceptor alive.
  void AsyncAccept(Handler handler);

 private:
  void AdaptBatch(std::size_t accepted);

  asio::ip::tcp::acceptor acceptor_;

  // The number of accept calls per wakeup. One call too many is wasted, so the batch grows only
  // after several full ones in a row.
  std::size_t batch_ = 1;
  int fullBatches_ = 0;
};

}  // namespace platform
