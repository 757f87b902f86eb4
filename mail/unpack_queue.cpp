#include "mail/unpack_queue.h"

#include <algorithm>
#include <utility>

#include "mail/message_parser.h"

namespace ModMail {

UnpackQueue::UnpackQueue(const core::ServiceEnvironment& environment)
    : program_(environment.program), loop_(environment.loop) {}

void UnpackQueue::Add(const std::vector<std::string>& messages, const std::string& mailRoot) {
  for (const std::string& message : messages) {
    const Job job = {message, mailRoot};
    if (std::find(waiting_.begin(), waiting_.end(), job) == waiting_.end()) {
      waiting_.push_back(job);
    }
  }
  if (busy_ || waiting_.empty()) return;
  if (!scope_) {
    scope_ = std::make_shared<core::HandlerScope>(
        loop_, [this](const std::string& error) { program_.errors.LogError(error); });
  }
  scope_->Start(Work());
}

void UnpackQueue::Stop() {
  waiting_.clear();
  if (const auto scope = std::exchange(scope_, nullptr)) scope->End();
}

core::Task<> UnpackQueue::Work() {
  struct Busy {
    explicit Busy(bool& flag) : flag_(flag) { flag_ = true; }
    ~Busy() { flag_ = false; }
    bool& flag_;
  } const busy(busy_);

  // First whoever is waiting for the reply that was sent just now.
  co_await core::YieldToEvents();
  while (!waiting_.empty()) {
    Job job = std::move(waiting_.front());
    waiting_.pop_front();
    core::Task<> unpacking = Unpack(std::move(job));
    co_await unpacking;
  }
}

core::Task<> UnpackQueue::Unpack(Job job) {
  try {
    MessageParser parser(job.message, job.mailRoot);
    core::Task<> unpacking = parser.Unpack();
    co_await unpacking;
  } catch (const core::HandlerEnded&) {
    throw;
  } catch (const std::exception& error) {
    // One message that does not fit the memory must not keep the others waiting.
    program_.errors.LogError(job.message + ": " + error.what());
  }
}

}  // namespace ModMail
