#pragma once

// Does what takes longer than clients may wait, on a thread of its own: the one exception from the
// rule that all code of the program runs on the loop's thread. Such work must use nothing but what
// it was given. The loop looks whether it is over instead of being told, so nothing runs on the
// loop for another thread, and there is nothing to lock.

#include <chrono>
#include <functional>
#include <memory>

#include "net/handler_scope.h"

namespace net {

class SideThread {
 public:
  SideThread() = default;
  ~SideThread() { Finish(); }
  SideThread(const SideThread&) = delete;
  SideThread& operator=(const SideThread&) = delete;

  /// Returns when `work` has; throws what it throws, or std::system_error if there can be no
  /// thread. If the handler ends earlier, the work is done to its end, and the next one waits.
  /// `work` must own what it uses. For one handler at a time.
  Task<> Run(std::function<void()> work);

  /// Waits for work whose handler has ended, and lets go of what it owns.
  void Finish();

 private:
  struct Work;

  Task<> AwaitEnd();

  static constexpr std::chrono::milliseconds kLook{2};

  std::shared_ptr<Work> work_;  // null while there is nothing to do
};

}  // namespace net
