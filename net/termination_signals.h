#pragma once

// The signals by which the system asks the program to end (SIGTERM and the like), as one call from
// the event loop.

#include <asio/signal_set.hpp>
#include <functional>

#include "net/event_loop.h"

namespace net {

class TerminationSignals {
 public:
  /// From now on those signals no longer end the process at once.
  explicit TerminationSignals(EventLoop& loop);

  /// Calls `action` at the first signal; not called if this object dies before.
  void OnFirst(std::function<void()> action);

 private:
  asio::signal_set signals_;
};

}  // namespace net
