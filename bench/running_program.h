#pragma once

// A server that a benchmark starts, measures and ends.

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace bench {

class RunningProgram {
 public:
  /// Starts `words` with `environment` added, its output thrown away.
  RunningProgram(const std::vector<std::string>& words,
                 const std::map<std::string, std::string>& environment);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// Asks it to end (SIGTERM); the seconds until it has. One that does not within 30 is killed.
  double End();

  pid_t Id() const { return process_; }

  /// Anonymous resident memory, in KiB.
  std::uint64_t AnonymousMemory() const;
  /// Processor time used so far, in clock ticks, and times that the process was put to sleep.
  std::uint64_t ProcessorTicks() const;
  std::uint64_t ContextSwitches() const;
  std::size_t Descriptors() const;

 private:
  std::uint64_t StatusField(const std::string& name) const;

  pid_t process_ = 0;
};

/// Seconds until `port` of this machine accepts connections; negative if it does not within 10.
double WaitForPort(std::uint16_t port);

/// A port of this machine that is free now and fits 16 bits with a sign.
std::uint16_t FreePort();

/// A fresh folder under the system's temporary one, removed at the end of the program.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Path(const std::string& name = "") const { return (path_ / name).string(); }
  void Write(const std::string& name, const std::string& content) const;

 private:
  std::filesystem::path path_;
};

}  // namespace bench
