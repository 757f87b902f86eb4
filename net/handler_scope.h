#pragma once

// What handlers belong to: a connection, or a service. A scope starts handlers, and when it ends,
// every handler that is suspended in it goes on at once with HandlerEnded thrown out of its await,
// so it runs to its end, cleans up after itself and is gone before End returns. No handler outlives
// what it was started for, and none is told of it twice.

#include <chrono>
#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "net/event_loop.h"
#include "net/intrusive_list.h"
#include "net/task.h"

namespace net {

/// Thrown out of an await whose scope has ended. A handler lets it pass, or catches it to go on
/// without awaiting anything more.
class HandlerEnded : public std::exception {
 public:
  const char* what() const noexcept override { return "the handler's connection has ended"; }
};

struct ScopeTag;
struct SourceTag;
class HandlerScope;

/// An await in progress. It is in its scope's list, and in the list of what it waits for until that
/// makes it ready.
class Suspension : public ListHook<ScopeTag>, public ListHook<SourceTag> {
 public:
  Suspension() = default;
  virtual ~Suspension() = default;

  bool await_ready() const noexcept { return false; }
  template <class Promise>
  bool await_suspend(std::coroutine_handle<Promise> handler) {
    return Suspend(handler, *handler.promise().scope);
  }
  void await_resume() const {
    if (ended_) throw HandlerEnded();
  }

  /// Goes on with the handler, from the loop.
  void Resume() { GoOn(false); }

  /// Goes on with the handler after pending events; called by what was waited for.
  void MakeReady();

 protected:
  EventLoop& Loop() const;

 private:
  friend class HandlerScope;

  /// Enters what is waited for; ends with a call of MakeReady.
  virtual void Arm() = 0;

  bool Suspend(std::coroutine_handle<> handler, HandlerScope& scope);
  void GoOn(bool ended);

  std::coroutine_handle<> handler_;
  HandlerScope* scope_ = nullptr;
  bool ended_ = false;
};

class HandlerScope : public std::enable_shared_from_this<HandlerScope> {
 public:
  using ErrorReport = std::function<void(const std::string& description)>;

  /// `reportError` is told what a handler threw; the handler's event ends there.
  HandlerScope(EventLoop& loop, ErrorReport reportError)
      : loop_(loop), reportError_(std::move(reportError)) {}

  /// Runs `handler` to its first suspension; from then on the scope keeps it.
  void Start(Task<> handler);

  /// Ends every suspended handler. One that is running right now, this call's own included, ends at
  /// its next await.
  void End();

  bool HasEnded() const { return ended_; }
  int HandlerCount() const { return handlerCount_; }
  EventLoop& Loop() const { return loop_; }

  /// Called whenever a handler has ended, unless the scope has. It may end the scope.
  void OnHandlerEnd(std::function<void()> action) { onHandlerEnd_ = std::move(action); }

 private:
  friend class Suspension;
  class Root;

  static Root Run(std::shared_ptr<HandlerScope> scope, Task<> handler);

  EventLoop& loop_;
  ErrorReport reportError_;
  std::function<void()> onHandlerEnd_;
  IntrusiveList<Suspension, ScopeTag> suspended_;
  int handlerCount_ = 0;
  bool ended_ = false;
};

/// Handlers that wait for one thing to happen. `co_await list.Wait()`, and look again at what was
/// waited for: it may be past by the time the handler goes on.
class WaitList {
 public:
  class Awaiter : public Suspension {
   public:
    explicit Awaiter(WaitList& list) : list_(list) {}

   private:
    void Arm() override { list_.waiting_.PushBack(*this); }
    WaitList& list_;
  };

  Awaiter Wait() { return Awaiter(*this); }
  void WakeAll() {
    while (Suspension* suspension = waiting_.PopFront()) suspension->MakeReady();
  }

 private:
  IntrusiveList<Suspension, SourceTag> waiting_;
};

/// `co_await YieldToEvents()` lets the events that are pending now run first.
class YieldToEvents : public Suspension {
 private:
  void Arm() override { MakeReady(); }
};

/// `co_await Pause(50ms)`.
class Pause : public Suspension {
 public:
  explicit Pause(EventLoop::Clock::duration length) : length_(length) {}

 private:
  void Arm() override;

  EventLoop::Clock::duration length_;
  std::optional<Timer> timer_;
};

}  // namespace net
