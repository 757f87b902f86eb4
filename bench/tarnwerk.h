#pragma once

// The program under measurement: all three services on free ports, all files in `folder`, one
// mailbox "box".

#include <string>

#include "bench/server.h"

namespace bench {

class Tarnwerk : public Server {
 public:
  enum class Display { kNone, kOurs };

  struct Options {
    Display display = Display::kNone;  // with a display the window opens
    std::string name = "Tarnwerk";
    std::string webKeys = {};  // further lines of the Web server's section, each with CR LF
  };

  /// Returns once the services accept connections; throws if they do not.
  Tarnwerk(const std::string& program, const Folder& folder, const Options& options);
  Tarnwerk(const std::string& program, const Folder& folder)
      : Tarnwerk(program, folder, Options()) {}

  std::uint16_t WebPort() const { return Port(); }
  std::uint16_t FtpPort() const { return ftpPort_; }
  std::uint16_t SmtpPort() const { return smtpPort_; }
  std::uint16_t Pop3Port() const { return pop3Port_; }

  /// The path of a message in the mailbox, numbered from 1.
  std::string Message(int number) const;

 private:
  const Folder& folder_;
  std::uint16_t ftpPort_ = FreePort();
  std::uint16_t smtpPort_ = FreePort();
  std::uint16_t pop3Port_ = FreePort();
};

}  // namespace bench
