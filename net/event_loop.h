#pragma once

// The one thread on which all application code runs, as that code sees it: a place to post jobs to,
// timers, and the queue of handlers that are ready to resume. What runs the thread is behind the
// executor: a plain I/O loop (net/plain_loop.h) or the window toolkit's loop (net/window_loop.h).
//
// An exception (lack of memory, say) ends the event that threw it and nothing else: it is reported.

#include <asio/any_io_executor.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "net/intrusive_list.h"

namespace net {

class Suspension;
class Timer;
struct SourceTag;

class EventLoop {
 public:
  using Clock = std::chrono::steady_clock;

  explicit EventLoop(asio::any_io_executor executor);
  ~EventLoop();
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  const asio::any_io_executor& Executor() const { return executor_; }

  /// Sets what gets the descriptions of exceptions; at first they are dropped.
  using ErrorReport = std::function<void(const std::string& description)>;
  void OnError(ErrorReport report) { onError_ = std::move(report); }
  void ReportError(const std::exception_ptr& error) noexcept;

  /// Runs `event` and reports what it throws.
  template <class Event>
  void Guard(const Event& event) noexcept {
    try {
      event();
    } catch (...) {
      ReportError(std::current_exception());
    }
  }

  /// Runs `job` after the events that are pending now. Only to be called on the loop's thread.
  void Post(std::function<void()> job);

  /// Resumes a suspended handler after the events that are pending now.
  void MakeReady(Suspension& suspension);

 private:
  friend class Timer;
  using Timers = std::multimap<Clock::time_point, Timer*>;

  Timers::iterator AddTimer(Clock::time_point due, Timer& timer);
  void RemoveTimer(Timers::iterator timer);
  void ArmAlarm();
  void OnAlarm();
  void PostResume();
  void ResumeReady();

  // How long handlers are resumed one after another before other events get their turn.
  static constexpr std::chrono::milliseconds kTurn{4};

  asio::any_io_executor executor_;
  ErrorReport onError_;
  IntrusiveList<Suspension, SourceTag> ready_;
  IntrusiveList<Suspension, SourceTag> resuming_;  // the rest of the current round
  bool resumePosted_ = false;
  Timers timers_;
  asio::steady_timer alarm_;  // set to the first of the timers, and only while there is one
};

/// The text of an exception.
std::string DescriptionOf(const std::exception_ptr& error);

/// One call at a later time. Destroying the timer stops it.
class Timer {
 public:
  explicit Timer(EventLoop& loop) : loop_(loop) {}
  ~Timer() { Stop(); }  // NOLINT(bugprone-exception-escape): cancelling a timer does not fail
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  /// Calls `action` after `delay`, instead of any action set before.
  void Start(EventLoop::Clock::duration delay, std::function<void()> action);
  void Stop();
  bool IsRunning() const { return running_; }

 private:
  friend class EventLoop;

  EventLoop& loop_;
  bool running_ = false;
  EventLoop::Timers::iterator entry_;
  std::function<void()> action_;
};

}  // namespace net
