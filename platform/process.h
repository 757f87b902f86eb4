#pragma once

// Starting another program, hidden, with its output thrown away and none of our sockets or files.

#include <asio/any_io_executor.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

/// A program that was started. It goes on when the object goes.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;

  /// Waits, without serving events, until the program has ended. One that has not after `patience`
  /// is killed; on Linux with what it has started, unless that has left its process group.
  virtual void EndWithin(std::chrono::milliseconds patience) = 0;
};

/// Starts `program` with `arguments` and returns at once; null with `error` on failure. On Windows
/// the words are joined by `separator` to the command line as it stands, nothing is quoted; on
/// Linux they are the argument vector, and no shell sees them. An empty path, or one with a NUL,
/// names no program.
///
/// `onExit` runs once on `executor` when the program itself has ended, whether or not something
/// that it started still runs. An executor that no longer runs drops it; the program goes on.
std::unique_ptr<StartedProgram> StartProgram(const asio::any_io_executor& executor,
                                             const std::filesystem::path& program,
                                             const std::vector<std::filesystem::path>& arguments,
                                             std::string_view separator,
                                             std::function<void()> onExit, std::error_code& error);

/// Whether `path` can name a program or stand among its arguments.
inline bool CanBeWord(const std::filesystem::path& path) {
  return !path.empty() && path.native().find(std::filesystem::path::value_type()) ==
                              std::filesystem::path::string_type::npos;
}

}  // namespace platform
