#pragma once

// The loop that the servers under test live on. It runs on a thread of its own, so that a test can
// be a client that blocks; everything that touches a server goes through Call.

#include <functional>
#include <future>

#include "net/event_loop.h"

namespace test {

class LoopHost {
 public:
  virtual ~LoopHost() = default;
  virtual net::EventLoop& Loop() = 0;

  /// Runs `action` on the loop's thread and returns when it has run.
  void Call(const std::function<void()>& action) {
    std::promise<void> done;
    Loop().Post([&] {
      action();
      done.set_value();
    });
    done.get_future().wait();
  }
};

/// The one of this test program, made by its main.
inline LoopHost* theLoopHost = nullptr;
inline LoopHost& TheLoopHost() { return *theLoopHost; }
inline void SetLoopHost(LoopHost& host) { theLoopHost = &host; }

}  // namespace test
