#include "net/event_loop.h"

#include <asio/post.hpp>

#include "net/handler_scope.h"

namespace net {

EventLoop::EventLoop(asio::any_io_executor executor)
    : executor_(std::move(executor)), alarm_(executor_) {}

EventLoop::~EventLoop() = default;

void EventLoop::ReportError(const std::exception_ptr& error) noexcept {
  try {
    if (onError_) onError_(DescriptionOf(error));
  } catch (...) {
    return;  // not even the report could be made
  }
}

void EventLoop::Post(std::function<void()> job) {
  asio::post(executor_, [this, job = std::move(job)] { Guard(job); });
}

void EventLoop::MakeReady(Suspension& suspension) {
  ready_.PushBack(suspension);
  PostResume();
}

void EventLoop::PostResume() {
  if (resumePosted_) return;
  resumePosted_ = true;
  asio::post(executor_, [this] { ResumeReady(); });
}

// One round of those that are ready now: what they make ready waits until pending events have run.
// Both lists are members, so that a handler that ends meanwhile unlinks itself.
void EventLoop::ResumeReady() {
  resumePosted_ = false;
  if (resuming_.IsEmpty()) resuming_.TakeAll(ready_);
  const Clock::time_point end = Clock::now() + kTurn;
  while (Suspension* suspension = resuming_.PopFront()) {
    suspension->Resume();
    if (Clock::now() >= end) break;
  }
  if (!resuming_.IsEmpty() || !ready_.IsEmpty()) PostResume();
}

EventLoop::Timers::iterator EventLoop::AddTimer(Clock::time_point due, Timer& timer) {
  const auto entry = timers_.emplace(due, &timer);
  if (entry == timers_.begin()) ArmAlarm();
  return entry;
}

void EventLoop::RemoveTimer(Timers::iterator timer) {
  timers_.erase(timer);
  if (timers_.empty()) alarm_.cancel();
}

void EventLoop::ArmAlarm() {
  alarm_.expires_at(timers_.begin()->first);
  alarm_.async_wait([this](const asio::error_code& error) {
    if (!error) OnAlarm();
  });
}

void EventLoop::OnAlarm() {
  const Clock::time_point now = Clock::now();
  while (!timers_.empty() && timers_.begin()->first <= now) {
    Timer& timer = *timers_.begin()->second;
    timers_.erase(timers_.begin());
    timer.running_ = false;
    const auto action = std::move(timer.action_);
    Guard(action);
  }
  if (!timers_.empty()) ArmAlarm();
}

std::string DescriptionOf(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    return "unknown error";
  }
}

void Timer::Start(EventLoop::Clock::duration delay, std::function<void()> action) {
  Stop();
  action_ = std::move(action);
  running_ = true;
  entry_ = loop_.AddTimer(EventLoop::Clock::now() + delay, *this);
}

void Timer::Stop() {
  if (!running_) return;
  running_ = false;
  loop_.RemoveTimer(entry_);
  action_ = nullptr;
}

}  // namespace net
