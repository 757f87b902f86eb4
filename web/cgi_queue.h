#pragma once

// Runs CGI programs one at a time, since they share an input file. A run belongs to the service,
// not to the client that requested it: if the client leaves, the next program still waits for this
// one, and the page is discarded. A stop of the service does not end the program either, and
// programs started later wait for its end. A client that leaves before its turn leaves the queue.
//
// A page is sent only if the program was started and wrote it in this run. It is taken out of the
// site at once, so nobody else can fetch it and the next run cannot write into it, however slowly
// the client reads.

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
  std::string outPath;   // the page that the program writes
  std::string pagePath;  // the name, but for a number, that the page has for a moment afterwards
  std::string body;      // bytes for the program's input
};

class CgiQueue {
 public:
  explicit CgiQueue(const core::ServiceEnvironment& environment);
  ~CgiQueue();
  CgiQueue(const CgiQueue&) = delete;
  CgiQueue& operator=(const CgiQueue&) = delete;

  /// Waits for its turn, writes the input file, runs the program and waits for its end, at most 30
  /// seconds. The result is the page, a file that has no name any more; it is not open if there is
  /// no page or too much waits already. A program that cannot be started is logged. Throws if the
  /// input file cannot be written.
  net::Task<platform::File> Run(CgiJob job);

  /// Empties the queue, which can be used again.
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
