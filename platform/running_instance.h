#pragma once

// The programs of this kind that the user has running: how a second start finds that there is one
// already, and how a "STOP" start finds and closes every one of them. What a killed program left
// behind counts for nothing.

#include <asio/any_io_executor.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

namespace platform {

/// This process as one that others can find. Ends with the object.
class RunningInstance {
 public:
  /// Announces this process. Null if an instance of the same executable with the same program
  /// directory runs already; where announcing is impossible the result is an instance that nobody
  /// finds, since that is no reason not to serve.
  static std::unique_ptr<RunningInstance> Announce(const std::filesystem::path& executable,
                                                   const std::filesystem::path& programDirectory);

  /// From now on `onClose` runs on `executor` when somebody asks this instance to close, once.
  virtual void OnCloseRequest(const asio::any_io_executor& executor,
                              std::function<void()> onClose) = 0;

  virtual ~RunningInstance() = default;
};

/// Asks every running instance of this user to close and waits until the process of each has ended.
/// False if one of them was still there after `patience`, or they cannot be looked for.
bool CloseRunningInstances(std::chrono::seconds patience);

}  // namespace platform
