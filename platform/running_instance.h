#pragma once

// The running instances of this program that belong to the user. A second start finds out here that
// one is running and can have its services started, and a "STOP" start closes all of them. Traces
// of a killed program are ignored.

#include <asio/any_io_executor.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

namespace platform {

/// Makes this process visible to others, until destroyed.
class RunningInstance {
 public:
  /// Announces this process. Null if an instance of the same executable with the same program
  /// directory is already running. If announcing is impossible, the result is an instance that
  /// cannot be found: that is no reason not to serve.
  static std::unique_ptr<RunningInstance> Announce(const std::filesystem::path& executable,
                                                   const std::filesystem::path& programDirectory);

  /// From now on, the first request to close runs `onClose` on `executor`, once.
  virtual void OnCloseRequest(const asio::any_io_executor& executor,
                              std::function<void()> onClose) = 0;

  /// From now on, each AskToStart of another process runs `onStart` on `executor`. Windows: never.
  virtual void OnStartRequest(const asio::any_io_executor& executor,
                              std::function<void()> onStart) = 0;

  virtual ~RunningInstance() = default;
};

/// Asks the running instance of that executable and program directory to start its services, and
/// does not wait for them. False if it cannot be asked, as on Windows.
bool AskToStart(const std::filesystem::path& executable,
                const std::filesystem::path& programDirectory);

/// Asks every running instance of this user to close, and waits for their processes to end. False
/// if one is still running after `patience`, or if instances cannot be searched for.
bool CloseRunningInstances(std::chrono::seconds patience);

}  // namespace platform
