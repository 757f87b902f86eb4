#pragma once

// Starting another program, hidden, with its output thrown away and none of our sockets or files.

#include <asio/any_io_executor.hpp>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

/// Starts `program` with `arguments` and returns at once. On Windows the words are joined by
/// `separator` to the command line as it stands, nothing is quoted; on Linux they are the argument
/// vector, and no shell sees them.
///
/// `onExit` runs once on `executor` when the program itself has ended, whether or not something
/// that it started still runs. It is not called when `error` is set. An executor that no longer
/// runs drops it; the program goes on.
void StartProgram(const asio::any_io_executor& executor, const std::filesystem::path& program,
                  const std::vector<std::filesystem::path>& arguments, std::string_view separator,
                  std::function<void()> onExit, std::error_code& error);

}  // namespace platform
