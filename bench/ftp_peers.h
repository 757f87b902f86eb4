#pragma once

// What the FTP benchmark compares the program with: minimal loops, and vsftpd.

#include <cstdint>
#include <string>

#include "bench/running_program.h"

namespace bench {

/// Seconds a plain loop takes to send the file within this process, 4 KiB at a time like the
/// server.
double PlainSend(const std::string& path);

/// Seconds a plain loop takes to receive that many bytes and write them to the file.
double PlainReceive(const std::string& path, std::size_t bytes);

/// Serves the folder "ftproot" anonymously, where vsftpd is installed.
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
