#pragma once

// The list behind a WindowQueue. Jobs are added from any thread and run on one.

#include <deque>
#include <memory>
#include <mutex>

#include "platform/window_queue.h"

namespace platform {

class JobList {
 public:
  /// Adds a job. True if the list was empty, so that the window thread must be woken.
  bool Add(std::unique_ptr<WindowQueue::Job> job) {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
    return jobs_.size() == 1;
  }

  /// Whether more than one job is waiting. Before running the first, the window thread must then
  /// wake itself again: the job may open a dialog, whose nested loop must find the others.
  bool HasSeveral() {
    const std::lock_guard lock(mutex_);
    return jobs_.size() > 1;
  }

  /// Runs at most `limit` of the waiting jobs, so that window events are not starved. True if jobs
  /// are left.
  bool Drain(int limit) {
    for (int i = 0; i < limit; ++i) {
      const std::unique_ptr<WindowQueue::Job> job = Take();
      if (!job) return false;
      job->Run();
    }
    const std::lock_guard lock(mutex_);
    return !jobs_.empty();
  }

 private:
  std::unique_ptr<WindowQueue::Job> Take() {
    const std::lock_guard lock(mutex_);
    if (jobs_.empty()) return nullptr;
    std::unique_ptr<WindowQueue::Job> job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
  }

  std::mutex mutex_;
  std::deque<std::unique_ptr<WindowQueue::Job>> jobs_;
};

}  // namespace platform
