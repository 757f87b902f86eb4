#pragma once

// Starting another program hidden, with its output discarded and no inherited sockets or files.

#include <asio/any_io_executor.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

/// A program that was started. Destroying the object does not end the program.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;

  /// Blocks until the program has ended, and kills it after `patience`. On Linux this also kills
  /// what it started, unless that left its process group.
  virtual void EndWithin(std::chrono::milliseconds patience) = 0;
};

/// Starts `program` with `arguments` and returns at once; null with `error` set on failure. On
/// Windows the words are joined by `separator` into the command line, without quoting; on Linux
/// they are the argument vector, and no shell is involved. An empty path, or one with a NUL, is an
/// error.
///
/// `onExit` runs once on `executor` when the program itself has ended, even if a program that it
/// started is still running. If the executor stops first, `onExit` is dropped and the program goes
/// on.
std::unique_ptr<StartedProgram> StartProgram(const asio::any_io_executor& executor,
                                             const std::filesystem::path& program,
                                             const std::vector<std::filesystem::path>& arguments,
                                             std::string_view separator,
                                             std::function<void()> onExit, std::error_code& error);

/// Whether `path` can be a program or an argument.
inline bool CanBeWord(const std::filesystem::path& path) {
  return !path.empty() && path.native().find(std::filesystem::path::value_type()) ==
                              std::filesystem::path::string_type::npos;
}

}  // namespace platform
