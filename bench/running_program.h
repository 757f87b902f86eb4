#pragma once

// A server process that a benchmark starts, measures and stops.

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace bench {

class RunningProgram {
 public:
  /// Starts the command `words` with `environment` added and its output discarded.
  RunningProgram(const std::vector<std::string>& words,
                 const std::map<std::string, std::string>& environment);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// Sends SIGTERM and returns the seconds until the process has ended; kills it after 30.
  double End();

  pid_t Id() const { return process_; }

  /// Anonymous resident memory, in KiB.
  std::uint64_t AnonymousMemory() const;
  /// Processor time used so far, in clock ticks, and the number of voluntary context switches.
  std::uint64_t ProcessorTicks() const;
  std::uint64_t ContextSwitches() const;
  std::size_t Descriptors() const;

 private:
  pid_t process_ = 0;
};

/// Seconds until the local `port` accepts connections; negative after 10 seconds without success.
double WaitForPort(std::uint16_t port);

/// A free local port that fits a signed 16-bit number.
std::uint16_t FreePort();

/// A new temporary folder, removed when the program exits.
class Folder {
 public:
  /// In memory, below TARNWERK_BENCH_MEMORY, it is out of reach of the disk's noise; without that
  /// variable it is on the disk.
  enum class Place { kDisk, kMemory };

  explicit Folder(Place place = Place::kDisk);
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Path(const std::string& name = "") const { return (path_ / name).string(); }
  void Write(const std::string& name, const std::string& content) const;

 private:
  std::filesystem::path path_;
};

}  // namespace bench
