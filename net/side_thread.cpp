#include "net/side_thread.h"

#include <atomic>
#include <exception>
#include <thread>
#include <utility>

namespace net {

struct SideThread::Work {
  explicit Work(std::function<void()> work) : work_(std::move(work)), thread_([this] { Do(); }) {}
  ~Work() { thread_.join(); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  bool IsOver() const { return isOver_; }

  /// Once it is over.
  void RethrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void Do() noexcept {
    try {
      work_();
    } catch (...) {
      failure_ = std::current_exception();
    }
    isOver_ = true;
  }

  // The thread uses the other members, so it comes last.
  std::function<void()> work_;
  std::exception_ptr failure_;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

void SideThread::Finish() { work_.reset(); }

Task<> SideThread::Run(std::function<void()> work) {
  Task<> former = AwaitEnd();
  co_await former;
  const auto current = std::make_shared<Work>(std::move(work));
  work_ = current;
  Task<> end = AwaitEnd();
  co_await end;
  current->RethrowFailure();
}

Task<> SideThread::AwaitEnd() {
  while (work_ && !work_->IsOver()) {
    Pause pause(kLook);
    co_await pause;
  }
  work_.reset();
}

}  // namespace net
