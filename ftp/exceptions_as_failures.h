#pragma once

// Runs a step of a command so that an exception makes the step fail and is logged, instead of
// ending the command without a reply. A client cannot provoke such an exception by itself: it means
// a lack of memory or a bug.

#include <exception>
#include <utility>

#include "files/logs.h"
#include "net/handler_scope.h"
#include "net/task.h"

namespace ModFtp {

/// What `step` returns; an empty one if it throws.
template <class Step>
auto ResultOf(const files::ErrorLog& errors, Step step) -> decltype(step()) {
  try {
    return step();
  } catch (...) {
    errors.LogError(net::DescriptionOf(std::current_exception()));
    return {};
  }
}

/// What `step` returns; false if it throws.
template <class Step>
bool Succeeds(const files::ErrorLog& errors, Step step) {
  return ResultOf(errors, std::move(step));
}

/// The same for a step that waits: its result, or an empty T (false, none) if it throws. Only
/// HandlerEnded passes through.
template <class T>
net::Task<T> TrapErrors(const files::ErrorLog& errors, net::Task<T> step) {
  try {
    T result = co_await step;
    co_return std::move(result);
  } catch (const net::HandlerEnded&) {
    throw;
  } catch (...) {
    errors.LogError(net::DescriptionOf(std::current_exception()));
  }
  co_return T{};
}

}  // namespace ModFtp
