#pragma once

// The entry procedure, from the start of the process to its first event. A failing step never
// prevents the next.

#include <string_view>

#include "settings/program.h"

namespace core {

/// The external effects of start-up, one function per step. Implemented by the program and by
/// tests.
class StartupSteps {
 public:
  virtual ~StartupSteps() = default;

  virtual void AuthorizeInFirewall() = 0;
  /// Closes all running instances of the user and waits for them to end.
  virtual void CloseRunningInstance() = 0;
  /// False if an instance with this executable and program directory is already running.
  virtual bool BecomeRunningInstance() = 0;
  virtual void RecordProgramPath() = 0;
  virtual void SwitchProxyOff() = 0;
  /// In the order Web, mail, FTP.
  virtual void StartServices() = 0;
  virtual void GoToTray() = 0;
  virtual void ShowMainWindow() = 0;
  virtual void OpenWebAddress() = 0;
};

}  // namespace core

namespace ModMain {

/// Runs the entry procedure with the words of `commandLine`. False if the process has nothing left
/// to do ("STOP", or another instance is running).
bool Main(const settings::Program& program, std::string_view commandLine,
          core::StartupSteps& steps);

}  // namespace ModMain
