#include "net/termination_signals.h"

#include <utility>

#include "platform/process_limits.h"

namespace net {

TerminationSignals::TerminationSignals(EventLoop& loop) : signals_(loop.Executor()) {
  for (const int signal : platform::EndSignals()) {
    asio::error_code ignored;
    signals_.add(signal, ignored);
  }
}

void TerminationSignals::OnFirst(std::function<void()> action) {
  signals_.async_wait([action = std::move(action)](const asio::error_code& error, int) {
    if (!error) action();
  });
}

}  // namespace net
