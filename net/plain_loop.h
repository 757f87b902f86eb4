#pragma once

// The loop without a window: an I/O context on the calling thread.

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>

#include "net/event_loop.h"

namespace net {

class PlainLoop {
 public:
  EventLoop& Events() { return events_; }

  /// Serves events until Stop is called. Returns at once if it was called before.
  void Run() {
    // An exception leaves run(); the next call continues after the event that threw.
    while (!context_.stopped()) events_.Guard([this] { context_.run(); });
    context_.restart();
  }

  void Stop() { context_.stop(); }

 private:
  static constexpr int kOneThread = 1;

  // The order matters: what the loop holds must be destroyed before the context. Without the work
  // guard, run() would return whenever nothing is pending.
  asio::io_context context_{kOneThread};
  asio::executor_work_guard<asio::io_context::executor_type> work_{context_.get_executor()};
  EventLoop events_{context_.get_executor()};
};

}  // namespace net
