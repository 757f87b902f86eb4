#pragma once

// What the FTP benchmark compares the program with: plain loops that do no more than they must, and
// vsftpd.

#include <cstdint>
#include <string>

#include "bench/running_program.h"

namespace bench {

/// Seconds in which a plain loop sends the file to a client of this process, 4 KiB at a time as the
/// server does.
double PlainSend(const std::string& path);

/// Seconds in which a plain loop receives so many bytes from one and writes them to the file.
double PlainReceive(const std::string& path, std::size_t bytes);

/// Serves the folder "ftproot" to anybody, if it is installed.
class Vsftpd {
 public:
  explicit Vsftpd(const Folder& folder);

  bool IsRunning() const { return running_; }
  std::uint16_t Port() const { return port_; }

 private:
  bool WriteSettings(const Folder& folder) const;

  std::uint16_t port_;
  bool settings_;
  RunningProgram process_;
  bool running_ = false;
};

}  // namespace bench
