#pragma once

#include <chrono>

namespace net {

/// How long a handler has run since it last yielded, for work that could take longer than others
/// should wait.
class Turn {
 public:
  bool IsOver() const { return Clock::now() - begin_ >= kLength; }
  /// To be called after yielding.
  void Renew() { begin_ = Clock::now(); }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kLength{2};

  Clock::time_point begin_ = Clock::now();
};

}  // namespace net
