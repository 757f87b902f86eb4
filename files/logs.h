#pragma once

// The log files of the program directory. Each line opens, appends and closes the file, so that a
// log can be read, cleared or copied at any time. Lines that cannot be written are dropped
// silently: logging never causes a failure.

#include <string>
#include <string_view>

#include "text/date_time.h"

namespace files {

/// Appends `line` and CR LF in the system code page.
void AppendLine(std::string_view file, std::string_view line);

class ErrorLog {
 public:
  /// `programDirectory`: a path text. The log is RunErr.Log in it.
  explicit ErrorLog(std::string_view programDirectory);

  /// Writes a line with the current time and `message`. Unprintable characters are replaced and an
  /// overlong message is truncated; a line break at its end is kept.
  void LogError(std::string_view message) const;

  /// The line for `message` at `time`, without its line end.
  static std::string Line(std::string_view message, text::WallTime time);

 private:
  std::string file_;
};

}  // namespace files

namespace ModCommon {

/// Appends `text` as a line to a trace file; with `marker`, followed by the marker line.
void AppendTrace(std::string_view text, std::string_view file, bool marker);

}  // namespace ModCommon
