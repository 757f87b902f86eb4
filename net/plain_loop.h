#pragma once

// The loop without a window: an I/O context on the calling thread.

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>

#include "net/event_loop.h"

namespace net {

class PlainLoop {
 public:
  EventLoop& Events() { return events_; }

  /// Serves events until Stop is called. A Stop that came before holds.
  void Run() {
    // What an event throws ends the run, and the next one goes on behind it.
    while (!context_.stopped()) events_.Guard([this] { context_.run(); });
    context_.restart();
  }

  void Stop() { context_.stop(); }

 private:
  static constexpr int kOneThread = 1;

  // In this order: what the loop holds must go before the context does. Without work the context
  // would stop by itself.
  asio::io_context context_{kOneThread};
  asio::executor_work_guard<asio::io_context::executor_type> work_{context_.get_executor()};
  EventLoop events_{context_.get_executor()};
};

}  // namespace net
