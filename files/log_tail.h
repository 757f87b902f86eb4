#pragma once

// The end of a log, for display. Logs are never truncated and may be of any size, so only the last
// part of a large one is loaded; an export still has all of it.

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace files {

struct LogTail {
  std::vector<std::string> lines;
  /// The number of bytes before them in the file; 0 if these are all lines.
  std::uint64_t leftOut = 0;

  bool IsWhole() const { return leftOut == 0; }
};

inline constexpr std::uint64_t kShownPartOfLog = 1U << 20;

/// Reads all lines of a log, or, if it is larger than `most` bytes, those that begin in the last
/// `most` bytes. No lines if the file is missing.
LogTail ReadLogTail(std::string_view log, std::uint64_t most = kShownPartOfLog);

/// Writes all lines of the log up to the last one in `tail` to the file `target`, replacing its
/// content, all in the system code page.
std::error_code ExportLog(std::string_view log, const LogTail& tail, std::string_view target);

}  // namespace files
