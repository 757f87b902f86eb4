#pragma once

// The loop with a window: every completion of the I/O context is handed to the window toolkit's
// thread, so that socket handlers and window handlers run on one thread, even while a dialog, a
// message box or a menu is open. The I/O context has a thread that only waits for the system and
// runs no application code.

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <memory>
#include <thread>

#include "net/event_loop.h"
#include "platform/window_queue.h"

namespace net {

class WindowLoop {
 public:
  /// Create and destroy it on the window thread.
  WindowLoop();
  ~WindowLoop();
  WindowLoop(const WindowLoop&) = delete;
  WindowLoop& operator=(const WindowLoop&) = delete;

  EventLoop& Events() { return *events_; }

 private:
  // The order matters: the queue drops its jobs before the context that they belong to is
  // destroyed.
  asio::io_context context_;
  asio::executor_work_guard<asio::io_context::executor_type> work_;
  platform::WindowQueue queue_;
  std::unique_ptr<EventLoop> events_;
  std::thread waiter_;
};

}  // namespace net
