#pragma once

// Steps of a command whose errors are failures of the command, not of the server. What they throw
// is logged: it is nothing that a client can bring about by itself, but a want of memory, or a
// fault.

#include <exception>
#include <utility>

#include "files/logs.h"
#include "net/handler_scope.h"
#include "net/task.h"

namespace ModFtp {

/// Whether a step succeeded; false if it throws.
template <class Step>
bool Succeeds(const files::ErrorLog& errors, Step step) {
  try {
    return step();
  } catch (...) {
    errors.LogError(net::DescriptionOf(std::current_exception()));
    return false;
  }
}

/// What a step that waits returns; a T of nothing (false, none) if it throws. The end of the
/// handler passes.
template <class T>
net::Task<T> Trapped(const files::ErrorLog& errors, net::Task<T> step) {
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
