#include "net/background_worker.h"

#include <utility>

namespace net {
namespace {

// Clears the flag however the handler ends.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

}  // namespace

BackgroundWorker::BackgroundWorker(EventLoop& loop, HandlerScope::ErrorReport reportError,
                                   std::function<Task<>()> work)
    : loop_(loop), reportError_(std::move(reportError)), work_(std::move(work)) {}

void BackgroundWorker::Start() {
  if (working_) return;
  if (!scope_) scope_ = std::make_shared<HandlerScope>(loop_, reportError_);
  scope_->Start(Run());
}

void BackgroundWorker::Stop() {
  if (const auto scope = std::exchange(scope_, nullptr)) scope->End();
}

Task<> BackgroundWorker::Run() {
  const Raised working(working_);
  Task<> work = work_();
  co_await work;
}

}  // namespace net
