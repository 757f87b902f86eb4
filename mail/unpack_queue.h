#pragma once

// Unpacks received messages one after another. That belongs to the service, not to the client whose
// QUIT asked for it: a client that leaves takes nothing along. One message at a time bounds the
// memory, however many are waiting.

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "core/handler_scope.h"
#include "core/program.h"

namespace ModMail {

class UnpackQueue {
 public:
  explicit UnpackQueue(const core::ServiceEnvironment& environment);

  /// Path texts of message files. One that is waiting already is not entered again.
  void Add(const std::vector<std::string>& messages, const std::string& mailRoot);

  /// Ends what is under way and forgets what waits. The queue can be used again.
  void Stop();

  bool IsIdle() const { return !busy_; }

 private:
  struct Job {
    std::string message;
    std::string mailRoot;
    bool operator==(const Job&) const = default;
  };

  core::Task<> Work();
  core::Task<> Unpack(Job job);

  const core::Program& program_;
  core::EventLoop& loop_;
  std::shared_ptr<core::HandlerScope> scope_;
  std::deque<Job> waiting_;
  bool busy_ = false;
};

}  // namespace ModMail
