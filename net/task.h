#pragma once

// The coroutine type in which handlers are written. A task starts when it is awaited; what it
// returns or throws reaches the task that awaits it.
//
// Every task belongs to the HandlerScope (net/handler_scope.h) of the handler that awaits it, and
// so to that handler's connection or service. There is no executor in between: a task resumes as
// soon as what it awaits resumes it, on the program's one thread.
//
// A task that ends without having been suspended returns to its awaiter like a function, so a loop
// may await any number of them. This does not rely on the compiler turning the end of one coroutine
// into a jump to the next, which g++ 12 does not do without optimization or with sanitizers.
//
// Rules for writing tasks: co_await is a statement of its own, on a named awaitable, since g++ 12
// destroys temporaries in the same expression twice, above all capturing lambdas. A task takes its
// arguments by value: a reference may dangle by the time it resumes.

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
    // The awaiter may destroy this task, so nothing of it is touched after the call.
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
  /// False if the task has ended already and its awaiter need not be suspended.
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
