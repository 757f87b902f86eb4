#pragma once

// Calculates what takes longer than clients may wait, on a thread of its own: the one exception
// from the rule that all code of the program runs on the loop's thread. A calculation must use
// nothing but what it was given. The loop looks whether it is over instead of being told, so
// nothing runs on the loop for another thread, and there is nothing to lock.

#include <chrono>
#include <functional>
#include <memory>

#include "net/handler_scope.h"

namespace net {

class Calculator {
 public:
  Calculator() = default;
  /// Waits for a calculation whose handler has ended.
  ~Calculator();
  Calculator(const Calculator&) = delete;
  Calculator& operator=(const Calculator&) = delete;

  /// Returns when `calculation` has; throws what it throws, or std::system_error if there can be no
  /// thread. If the handler ends earlier, the calculation runs to its end, and the next one waits.
  /// `calculation` must own what it uses. For one handler at a time.
  Task<> Run(std::function<void()> calculation);

 private:
  struct Work;

  Task<> AwaitEnd();

  static constexpr std::chrono::milliseconds kLook{2};

  std::shared_ptr<Work> work_;  // null while nothing is calculated
};

}  // namespace net
