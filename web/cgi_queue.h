#pragma once

// Runs CGI programs one after another, since they share one input file. A program's run belongs to
// the service, not to the client that asked for it: if the client leaves, the next program still
// waits for this one, and its page is thrown away. Even a stop of the service leaves the program
// running, and what is started afterwards waits for its end. A client that leaves before its turn
// leaves the queue.
//
// A page counts only if its program was started and has written it in this run. It is taken out of
// the site at once, so that nobody else can fetch it and the program's next run cannot write into
// it, however long its client takes to read.

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "core/service_environment.h"
#include "net/background_worker.h"
#include "platform/file.h"
#include "settings/program.h"

namespace ModWeb {

/// Paths are path texts.
struct CgiJob {
  std::string program;
  std::string inPath;
  std::string outPath;   // what the program writes
  std::string pagePath;  // what that is called for a moment afterwards, but for a number
  std::string body;
};

class CgiQueue {
 public:
  explicit CgiQueue(const core::ServiceEnvironment& environment);
  ~CgiQueue();
  CgiQueue(const CgiQueue&) = delete;
  CgiQueue& operator=(const CgiQueue&) = delete;

  /// Waits for its turn, writes the input file, runs the program and waits until it has ended, up
  /// to 30 seconds. The result is its page, whose file has no name any more; it is not open where
  /// there is no page, or where too much waits already. A program that cannot be started is told to
  /// the error log. Throws if the input file cannot be written.
  net::Task<platform::File> Run(CgiJob job);

  /// Ends what waits. The queue can be used again.
  void Stop();

 private:
  struct Ticket;
  class Place;
  class Execution;

  bool IsFull(const CgiJob& job) const;
  void RefuseOverflow();
  net::Task<> Work();
  net::Task<> AwaitExecution();
  net::Task<> Execute(std::shared_ptr<Ticket> ticket);
  net::Task<> RunProgram(std::shared_ptr<Ticket> ticket);

  static constexpr std::size_t kMostWaiting = 64;
  static constexpr std::size_t kMostBytesWaiting = 8U << 20;

  const settings::Program& program_;
  net::EventLoop& loop_;
  std::deque<std::shared_ptr<Ticket>> waiting_;
  std::size_t bytesWaiting_ = 0;
  bool hasOverflowed_ = false;
  std::shared_ptr<Execution> execution_;  // the program that runs now
  std::uint64_t pagesTaken_ = 0;
  net::BackgroundWorker worker_;
};

}  // namespace ModWeb
