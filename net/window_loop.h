#pragma once

// The loop with a window: everything that the I/O context completes is handed to the window
// toolkit's thread, so that handlers of sockets and of the window run on one thread, also while a
// dialog, a message box or a menu is open. A thread of its own only waits for the system; it runs
// no application code.

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <optional>
#include <thread>

#include "net/event_loop.h"
#include "platform/window_queue.h"

namespace net {

class WindowLoop {
 public:
  /// To be made and destroyed on the window thread.
  WindowLoop();
  ~WindowLoop();
  WindowLoop(const WindowLoop&) = delete;
  WindowLoop& operator=(const WindowLoop&) = delete;

  EventLoop& Events() { return *events_; }

 private:
  // In this order: the queue drops its jobs before the context that they belong to goes.
  asio::io_context context_;
  asio::executor_work_guard<asio::io_context::executor_type> work_;
  platform::WindowQueue queue_;
  std::optional<EventLoop> events_;
  std::thread waiter_;
};

}  // namespace net
