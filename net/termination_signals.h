#pragma once

// The signals that ask the program to end (SIGTERM and the like), delivered as one call on the
// event loop. Later ones are ignored.

#include <asio/signal_set.hpp>
#include <functional>

#include "net/event_loop.h"

namespace net {

class TerminationSignals {
 public:
  /// Keeps those signals from ending the process at once.
  explicit TerminationSignals(EventLoop& loop);

  /// Calls `action` at the first signal, unless this object has been destroyed by then.
  void OnFirst(std::function<void()> action);

 private:
  asio::signal_set signals_;
};

}  // namespace net
