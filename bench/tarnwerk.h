#pragma once

// The program under measurement: all three services on free ports, all files in `folder`, one
// mailbox "box".

#include <memory>
#include <string>

#include "bench/running_program.h"

namespace bench {

class Tarnwerk {
 public:
  enum class Display { kNone, kOurs };

  /// Returns once the services accept connections; exits if they do not. The window opens if a
  /// display is given.
  Tarnwerk(const std::string& program, const Folder& folder, Display display = Display::kNone);

  std::uint16_t WebPort() const { return webPort_; }
  std::uint16_t FtpPort() const { return ftpPort_; }
  std::uint16_t SmtpPort() const { return smtpPort_; }
  std::uint16_t Pop3Port() const { return pop3Port_; }

  /// Seconds from the start of the process to the first answer of its Web service.
  double ReadySeconds() const { return readySeconds_; }

  /// The path of a message in the mailbox.
  std::string Message(int number) const;

  /// Seconds from SIGTERM to the end of the process.
  double End() { return process_->End(); }

  const RunningProgram& Process() const { return *process_; }

 private:
  const Folder& folder_;
  std::uint16_t webPort_ = FreePort();
  std::uint16_t ftpPort_ = FreePort();
  std::uint16_t smtpPort_ = FreePort();
  std::uint16_t pop3Port_ = FreePort();
  std::unique_ptr<RunningProgram> process_;
  double readySeconds_ = 0;
};

}  // namespace bench
