#pragma once

// The coroutine in which handlers are written. A task starts when it is awaited and runs on the
// awaiting handler's stack of tasks; what it returns or throws reaches the awaiting task.
//
// Every task belongs to the HandlerScope (net/handler_scope.h) of the handler that awaits it, and
// so to that handler's connection or service. There is no executor in between: a task goes on at
// the moment when what it awaits is there, on the one thread that the program has.
//
// A task that ends without having been suspended returns to its awaiter like a function, so a loop
// may await any number of them: nothing here relies on the compiler turning one coroutine's end
// into a jump to the next, which g++ 12 does not do without optimisation or with sanitizers.
//
// A rule for whoever writes tasks: co_await stands in a statement of its own, on a named awaitable.
// g++ 12 destroys temporaries twice that stand in one expression with it, capturing lambdas above
// all. And a task takes its arguments by value: a reference may be gone when it goes on.

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace net {

class HandlerScope;

namespace detail {

struct PromiseBase {
  HandlerScope* scope = nullptr;
  std::coroutine_handle<> continuation;  // set once the awaiter is suspended
  std::exception_ptr failure;

  struct FinalAwaiter {
    bool await_ready() const noexcept { return false; }
    // The awaiter may destroy this task: nothing of it is touched behind the call.
    template <class Promise>
    void await_suspend(std::coroutine_handle<Promise> done) const noexcept {
      if (const std::coroutine_handle<> awaiter = done.promise().continuation) awaiter.resume();
    }
    void await_resume() const noexcept {}
  };

  std::suspend_always initial_suspend() const noexcept { return {}; }
  FinalAwaiter final_suspend() const noexcept { return {}; }
  void unhandled_exception() { failure = std::current_exception(); }
  void RethrowFailure() const {
    if (failure) std::rethrow_exception(failure);
  }
};

template <class T>
struct Promise : PromiseBase {
  std::optional<T> value;

  void return_value(T result) { value = std::move(result); }
  T Result() {
    RethrowFailure();
    return std::move(value).value();
  }
};

template <>
struct Promise<void> : PromiseBase {
  void return_void() const {}
  void Result() const { RethrowFailure(); }
};

}  // namespace detail

template <class T = void>
class [[nodiscard]] Task {
 public:
  struct promise_type : detail::Promise<T> {
    Task get_return_object() {
      return Task(std::coroutine_handle<promise_type>::from_promise(*this));
    }
  };

  Task(Task&& other) noexcept : frame_(std::exchange(other.frame_, nullptr)) {}
  Task& operator=(Task&& other) noexcept {
    std::swap(frame_, other.frame_);
    return *this;
  }
  ~Task() {
    if (frame_) frame_.destroy();
  }

  bool await_ready() const noexcept { return false; }
  /// False: the task has ended already, and its awaiter goes straight on.
  template <class Promise>
  bool await_suspend(std::coroutine_handle<Promise> awaiting) {
    frame_.promise().scope = awaiting.promise().scope;
    frame_.resume();
    if (frame_.done()) return false;
    frame_.promise().continuation = awaiting;
    return true;
  }
  T await_resume() { return frame_.promise().Result(); }

 private:
  explicit Task(std::coroutine_handle<promise_type> frame) : frame_(frame) {}

  std::coroutine_handle<promise_type> frame_;
};

}  // namespace net
