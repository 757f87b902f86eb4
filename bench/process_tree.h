#pragma once

// What a process and all its descendants use, from /proc.

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace bench {

struct Usage {
  /// Of all processes, and of those that have ended and been waited for.
  double processorSeconds = 0;
  /// False if a process ignores its children's end: then the system forgets what they used.
  bool countsEndedChildren = true;
  /// In KiB; pages that several processes share count for each.
  std::uint64_t resident = 0;
  std::uint64_t anonymous = 0;
};

/// Nothing for a process that has ended.
Usage UsageOfTree(pid_t root);

/// The number of its processes, and of those that have ended and not been waited for.
std::size_t CountOfTree(pid_t root);

/// From now on a process whose parent ends without waiting for it becomes a child of this one.
void AdoptOrphans();

/// The processor seconds of adopted processes that have ended since the last call.
double SecondsOfOrphans();

/// User and system time of a process and of the children that it has waited for, in clock ticks.
std::uint64_t ProcessorTicks(pid_t process);

/// A line of /proc/<process>/status, without its name; empty if there is none.
std::string StatusLine(pid_t process, const std::string& name);

/// The number in such a line, or 0.
std::uint64_t StatusNumber(pid_t process, const std::string& name, int base = 10);

}  // namespace bench
