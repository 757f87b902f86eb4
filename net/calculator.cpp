#include "net/calculator.h"

#include <atomic>
#include <exception>
#include <thread>
#include <utility>

namespace net {

struct Calculator::Work {
  explicit Work(std::function<void()> calculation)
      : calculation_(std::move(calculation)), thread_([this] { Calculate(); }) {}
  ~Work() { thread_.join(); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  bool IsOver() const { return isOver_; }

  /// Once it is over.
  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void Calculate() noexcept {
    try {
      calculation_();
    } catch (...) {
      failure_ = std::current_exception();
    }
    isOver_ = true;
  }

  // The thread uses the other members, so it comes last.
  std::function<void()> calculation_;
  std::exception_ptr failure_;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

Calculator::~Calculator() = default;

Task<> Calculator::Run(std::function<void()> calculation) {
  Task<> former = AwaitEnd();
  co_await former;
  const auto work = std::make_shared<Work>(std::move(calculation));
  work_ = work;
  Task<> end = AwaitEnd();
  co_await end;
  work->RethrowFailure();
}

Task<> Calculator::AwaitEnd() {
  while (work_ && !work_->IsOver()) {
    Pause pause(kLook);
    co_await pause;
  }
  work_.reset();
}

}  // namespace net
