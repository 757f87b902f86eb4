#pragma once

// Seconds of the steady clock.

#include <chrono>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

template <class Action>
double SecondsOf(const Action& action) {
  const auto start = Clock::now();
  action();
  return SecondsSince(start);
}

}  // namespace bench
