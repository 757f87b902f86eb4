#pragma once

// The servers that the mail benchmark compares: ours, a plain loop that does no more than it must,
// and dovecot. Each has one mailbox, "box".

#include <memory>
#include <string>

#include "bench/running_program.h"

namespace bench {

class Tarnwerk {
 public:
  Tarnwerk(const std::string& program, const Folder& folder);

  std::uint16_t SmtpPort() const { return smtpPort_; }
  std::uint16_t Pop3Port() const { return pop3Port_; }
  const RunningProgram& Process() const { return *process_; }
  std::string Message(int number) const;

 private:
  const Folder& folder_;
  std::uint16_t smtpPort_;
  std::uint16_t pop3Port_;
  std::unique_ptr<RunningProgram> process_;
};

/// Answers one client at a time. A packet that begins with four capital letters is a command; any
/// other is appended to a file of its own per message, which is closed after each packet and
/// flushed, with its folder, after the last.
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
