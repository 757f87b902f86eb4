#pragma once

// Runs CGI programs one after another, since they share one input file. A program's run belongs to
// the service, not to the client that asked for it: if the client leaves, the next program still
// waits for this one, and the page that nobody will fetch is removed.
//
// Two runs of one program write pages of the same name. So a page is taken aside before the next
// program runs, however long its client takes to fetch it.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "core/handler_scope.h"
#include "core/program.h"

namespace ModWeb {

/// Paths are path texts.
struct CgiJob {
  std::string program;
  std::string inPath;
  std::string outPath;   // what the program writes
  std::string pagePath;  // what that is called afterwards, but for a number
  std::string body;
};

/// A page that a program has written; the file goes with the object.
class CgiPage {
 public:
  CgiPage() = default;
  explicit CgiPage(std::string path) : path_(std::move(path)) {}
  CgiPage(CgiPage&& other) noexcept : path_(std::exchange(other.path_, {})) {}
  CgiPage& operator=(CgiPage&& other) noexcept {
    std::swap(path_, other.path_);
    return *this;
  }
  ~CgiPage();

  /// Empty if there is none.
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class CgiQueue {
 public:
  explicit CgiQueue(const core::ServiceEnvironment& environment);

  /// Waits for its turn, writes the input file, runs the program and waits until it has ended, up
  /// to 30 seconds. What is there of its page then is the result. A program that cannot be started
  /// is told to the error log. Throws if the input file cannot be written.
  core::Task<CgiPage> Run(CgiJob job);

  /// Ends what is queued; a program that runs is left to itself. The queue can be used again.
  void Stop();

 private:
  struct Ticket;

  core::Task<> Perform(std::shared_ptr<Ticket> ticket);
  core::Task<> Execute(std::shared_ptr<Ticket> ticket);
  core::Task<> RunProgram(std::shared_ptr<Ticket> ticket);
  CgiPage TakeAside(const CgiJob& job);

  const core::Program& program_;
  core::EventLoop& loop_;
  std::shared_ptr<core::HandlerScope> runs_;
  bool busy_ = false;
  std::uint64_t pagesTaken_ = 0;
  core::WaitList turns_;
};

}  // namespace ModWeb
