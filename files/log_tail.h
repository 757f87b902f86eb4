#pragma once

// A log for the user to look through. Logs are never shortened and may be of any size, so only the
// last part of a large one is read; it is exported whole all the same.

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace files {

struct LogTail {
  std::vector<std::string> lines;
  /// What stands in front of them in the file, in bytes. 0: these are all lines.
  std::uint64_t leftOut = 0;

  bool IsWhole() const { return leftOut == 0; }
};

inline constexpr std::uint64_t kShownPartOfLog = 1U << 20;

/// The lines of a log, the last ones only if it has more than `most` bytes. A line that begins in
/// front of that part is left out. No lines if there is no such file.
LogTail ReadLogTail(std::string_view log, std::uint64_t most = kShownPartOfLog);

/// Writes every line up to the last one of `tail` to the file `target`, those that `tail` leaves
/// out as well. Replaces what was there.
std::error_code ExportLog(std::string_view log, const LogTail& tail, std::string_view target);

}  // namespace files
