#pragma once

// What the mail server is compared with: a minimal loop and aiosmtpd, which receive, and dovecot,
// from which mail is collected. Each has one mailbox, "box".

#include <string>

#include "bench/server.h"

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

/// A process per session; must be started by root.
class Dovecot : public Server {
 public:
  static constexpr const char* kName = "dovecot";
  static bool IsInstalled() { return HasProgram("dovecot"); }

  explicit Dovecot(const Folder& folder);

  /// Puts a message into the mailbox.
  void Deliver(int number, const std::string& content) const;

 private:
  const Folder& folder_;
};

/// One thread, in Python. Like the program it flushes each message and its folder.
class Aiosmtpd : public Server {
 public:
  static constexpr const char* kName = "aiosmtpd";
  static bool IsInstalled() { return HasPythonModule("aiosmtpd"); }

  explicit Aiosmtpd(const Folder& folder);
};

}  // namespace bench
