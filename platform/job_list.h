#pragma once

// The list behind a WindowQueue: filled from any thread, emptied on one.

#include <deque>
#include <memory>
#include <mutex>

#include "platform/window_queue.h"

namespace platform {

class JobList {
 public:
  /// Adds a job; true if the list was empty, so that the window thread has to be woken.
  bool Add(std::unique_ptr<WindowQueue::Job> job) {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
    return jobs_.size() == 1;
  }

  /// Whether more than one job waits. Whoever starts on them then has himself woken once more, in
  /// case the first of them opens a dialog: its nested loop has to find the others.
  bool HasSeveral() {
    const std::lock_guard lock(mutex_);
    return jobs_.size() > 1;
  }

  /// Runs what is there, at most `limit` jobs so that the window's own events get their turn. True
  /// if jobs are left.
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
