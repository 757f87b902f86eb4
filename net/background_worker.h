#pragma once

// Works through a queue in the background: one handler at a time, in a scope that ends with the
// service rather than with the connection that queued the work. The queue itself is the owner's;
// the worker only starts the owner's handler when there is work and ends it at the service's stop.
//
// Declare it after whatever its handler uses: destroying it ends the handler.

#include <functional>
#include <memory>

#include "net/handler_scope.h"

namespace net {

class BackgroundWorker {
 public:
  /// `work` makes the handler, which returns once the queue is empty. `reportError` is given what
  /// the handler throws; that handler has ended, and the next Start makes another.
  BackgroundWorker(EventLoop& loop, HandlerScope::ErrorReport reportError,
                   std::function<Task<>()> work);
  ~BackgroundWorker() { Stop(); }  // NOLINT(bugprone-exception-escape): handlers let none out
  BackgroundWorker(const BackgroundWorker&) = delete;
  BackgroundWorker& operator=(const BackgroundWorker&) = delete;

  /// Runs the handler to its first suspension. Does nothing while one is at work: that one finds
  /// what was queued.
  void Start();

  /// Ends the handler before it returns, with HandlerEnded thrown out of its await; a handler that
  /// calls this itself ends at its next await. The worker can be started again.
  void Stop();

  bool IsWorking() const { return working_; }

 private:
  Task<> Run();

  EventLoop& loop_;
  HandlerScope::ErrorReport reportError_;
  std::function<Task<>()> work_;
  std::shared_ptr<HandlerScope> scope_;  // null while stopped
  bool working_ = false;
};

}  // namespace net
