#pragma once

// Jobs for the thread that runs the window toolkit's loop. The system's own loop runs them, and not
// the toolkit's queue of pending events, so they also run during modal dialogs, message boxes,
// pop-up menus and while a window is dragged.

#include <memory>

namespace platform {

class WindowQueue {
 public:
  class Job {
   public:
    virtual ~Job() = default;
    virtual void Run() = 0;
  };

  /// Must be created and destroyed on the window thread. Jobs still waiting are then dropped.
  WindowQueue();
  ~WindowQueue();
  WindowQueue(const WindowQueue&) = delete;
  WindowQueue& operator=(const WindowQueue&) = delete;

  /// Runs `job` on the window thread, in the order posted. May be called from any thread.
  void Post(std::unique_ptr<Job> job);

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
