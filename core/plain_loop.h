#pragma once

// The loop without a window: an I/O context on the calling thread.

#include <asio/io_context.hpp>

#include "core/event_loop.h"

namespace core {

class PlainLoop {
 public:
  EventLoop& Events() { return events_; }

  /// Serves events until Stop is called. A Stop that came before holds.
  void Run() {
    const auto work = asio::make_work_guard(context_);
    // What an event throws ends the run, and the next one goes on behind it.
    while (!context_.stopped()) events_.Guard([this] { context_.run(); });
    context_.restart();
  }

  void Stop() { context_.stop(); }

 private:
  static constexpr int kOneThread = 1;

  // In this order: what the loop holds must go before the context does.
  asio::io_context context_{kOneThread};
  EventLoop events_{context_.get_executor()};
};

}  // namespace core
