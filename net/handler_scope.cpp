#include "net/handler_scope.h"

#include <utility>

namespace net {

// The coroutine around a started handler. It owns the task and frees itself at the end.
class HandlerScope::Root {
 public:
  struct promise_type {
    promise_type(std::shared_ptr<HandlerScope>& owner, Task<>&) : scope(owner.get()) {}

    Root get_return_object() const { return {}; }
    std::suspend_never initial_suspend() const noexcept { return {}; }
    std::suspend_never final_suspend() const noexcept { return {}; }
    void return_void() const {}
    void unhandled_exception() const { std::terminate(); }  // Run lets none out

    HandlerScope* scope;
  };
};

HandlerScope::Root HandlerScope::Run(std::shared_ptr<HandlerScope> scope, Task<> handler) {
  ++scope->handlerCount_;
  try {
    co_await handler;
  } catch (const HandlerEnded&) {
    // The connection or the service has ended: not an error.
  } catch (...) {
    scope->loop_.Guard([&] { scope->reportError_(DescriptionOf(std::current_exception())); });
  }
  --scope->handlerCount_;
  if (!scope->ended_ && scope->onHandlerEnd_) scope->loop_.Guard(scope->onHandlerEnd_);
}

void HandlerScope::Start(Task<> handler) { Run(shared_from_this(), std::move(handler)); }

void HandlerScope::End() {
  const std::shared_ptr<HandlerScope> self = shared_from_this();
  ended_ = true;
  while (Suspension* suspension = suspended_.PopFront()) suspension->GoOn(true);
}

EventLoop& Suspension::Loop() const { return scope_->loop_; }

bool Suspension::Suspend(std::coroutine_handle<> handler, HandlerScope& scope) {
  ended_ = scope.HasEnded();
  if (ended_) return false;
  handler_ = handler;
  scope_ = &scope;
  scope.suspended_.PushBack(*this);
  Arm();
  return true;
}

void Suspension::GoOn(bool ended) {
  ListHook<ScopeTag>::Unlink();
  ListHook<SourceTag>::Unlink();
  ended_ = ended;
  handler_.resume();
}

void Suspension::MakeReady() { Loop().MakeReady(*this); }

void Pause::Arm() {
  timer_.emplace(Loop());
  timer_->Start(length_, [this] { MakeReady(); });
}

}  // namespace net
