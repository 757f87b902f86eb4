#pragma once

// Runs CGI programs one after another, since they share one input file. A program's run belongs to
// the service, not to the client that asked for it: if the client leaves, the next program still
// waits for this one, and the page that nobody will fetch is removed.

#include <memory>
#include <string>

#include "core/handler_scope.h"
#include "core/program.h"

namespace ModWeb {

/// Paths are path texts.
struct CgiJob {
  std::string program;
  std::string inPath;
  std::string outPath;
  std::string body;
};

class CgiQueue {
 public:
  explicit CgiQueue(const core::ServiceEnvironment& environment);

  /// Waits for its turn, writes the input file, runs the program and waits until it has ended, up
  /// to 30 seconds. A program that cannot be started is told to the error log. Throws if the input
  /// file cannot be written.
  core::Task<> Run(CgiJob job);

  /// Ends what is queued; a program that runs is left to itself. The queue can be used again.
  void Stop();

 private:
  struct Ticket;

  core::Task<> Perform(std::shared_ptr<Ticket> ticket);
  core::Task<> Execute(std::shared_ptr<Ticket> ticket);
  core::Task<> RunProgram(std::shared_ptr<Ticket> ticket);

  const core::Program& program_;
  core::EventLoop& loop_;
  std::shared_ptr<core::HandlerScope> runs_;
  bool busy_ = false;
  core::WaitList turns_;
};

}  // namespace ModWeb
