#pragma once

// Steps of a command whose errors are failures of the command, not of the server.

#include <exception>
#include <utility>

#include "core/handler_scope.h"
#include "core/task.h"

namespace ModFtp {

/// Whether a step succeeded; false if it throws.
template <class Step>
bool Succeeds(Step step) {
  try {
    return step();
  } catch (const std::exception&) {
    return false;
  }
}

/// What a step that waits returns; a T of nothing (false, none) if it throws. The end of the
/// handler passes.
template <class T>
core::Task<T> Trapped(core::Task<T> step) {
  try {
    T result = co_await step;
    co_return std::move(result);
  } catch (const core::HandlerEnded&) {
    throw;
  } catch (const std::exception&) {
    // Told below.
  }
  co_return T{};
}

}  // namespace ModFtp
