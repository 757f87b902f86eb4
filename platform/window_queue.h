#pragma once

// Jobs for the thread that runs the window toolkit's loop. They are run by the system's own loop,
// not by the toolkit's list of pending events, so they are served inside modal dialogs, message
// boxes, pop-up menus and while a window is dragged.

#include <memory>

namespace platform {

class WindowQueue {
 public:
  class Job {
   public:
    virtual ~Job() = default;
    virtual void Run() = 0;
  };

  /// To be made and destroyed on the window thread. Jobs still waiting at the end are dropped.
  WindowQueue();
  ~WindowQueue();
  WindowQueue(const WindowQueue&) = delete;
  WindowQueue& operator=(const WindowQueue&) = delete;

  /// Runs `job` on the window thread, after those posted before it. From any thread.
  void Post(std::unique_ptr<Job> job);

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
