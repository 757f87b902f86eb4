#pragma once

// What handlers belong to: a connection, or a service. A scope starts handlers. When it ends, every
// handler suspended in it resumes at once with HandlerEnded thrown out of its await, cleans up, and
// is gone before End returns. No handler outlives what it was started for.

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

/// Thrown out of an await whose scope has ended. A handler lets it pass, or catches it and finishes
/// without another await.
class HandlerEnded : public std::exception {
 public:
  const char* what() const noexcept override { return "the handler's connection has ended"; }
};

struct ScopeTag;
struct SourceTag;
class HandlerScope;

/// An await in progress. It is in its scope's list, and until it is made ready also in the list of
/// what it waits for.
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

  /// Resumes the handler. Called by the loop.
  void Resume() { GoOn(false); }

  /// Resumes the handler after pending events. Called by what it waits for.
  void MakeReady();

 protected:
  EventLoop& Loop() const;

 private:
  friend class HandlerScope;

  /// Starts the wait, at whose end MakeReady is called.
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

  /// `reportError` gets the description of what a handler threw; the handler has then ended.
  HandlerScope(EventLoop& loop, ErrorReport reportError)
      : loop_(loop), reportError_(std::move(reportError)) {}

  /// Runs `handler` to its first suspension. The scope owns it from then on.
  void Start(Task<> handler);

  /// Ends every suspended handler. One that is running, such as the caller, ends at its next await.
  void End();

  bool HasEnded() const { return ended_; }
  int HandlerCount() const { return handlerCount_; }
  EventLoop& Loop() const { return loop_; }

  /// Sets what is called whenever a handler has ended before its scope. It may end the scope.
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

/// Handlers that wait for one thing to happen, each with `co_await list.Wait()`. A woken handler
/// has to check what it waited for again: it may be over by the time the handler resumes.
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

/// `co_await YieldToEvents()` resumes after the events that are pending now.
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
