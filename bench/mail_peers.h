#pragma once

// What the mail benchmark compares the program with: a minimal loop, and dovecot. Each has one
// mailbox, "box".

#include <memory>
#include <string>

#include "bench/running_program.h"

namespace bench {

/// Answers one client at a time. A packet that begins with four capital letters is a command; any
/// other is appended to the message's file, which is closed after each packet and flushed, together
/// with its folder, after the last one.
class PlainLoop {
 public:
  explicit PlainLoop(const Folder& folder);
  ~PlainLoop();
  PlainLoop(const PlainLoop&) = delete;
  PlainLoop& operator=(const PlainLoop&) = delete;

  std::uint16_t Port() const { return port_; }

 private:
  std::uint16_t port_;
  int process_;
};

class Dovecot {
 public:
  explicit Dovecot(const Folder& folder);

  std::uint16_t Port() const { return port_; }

  /// Puts a message into the mailbox.
  void Deliver(int number, const std::string& content) const;

 private:
  const Folder& folder_;
  std::uint16_t port_;
  std::unique_ptr<RunningProgram> process_;
};

}  // namespace bench
