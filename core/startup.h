#pragma once

// The entry procedure: what happens between the start of the process and its first event. Every
// step goes on past whatever fails in the one before.

#include <string_view>

#include "settings/program.h"

namespace core {

/// What start-up does to the world outside, step by step; the program and tests each bring their
/// own.
class StartupSteps {
 public:
  virtual ~StartupSteps() = default;

  virtual void AuthorizeInFirewall() = 0;
  /// Closes every running instance of the user and waits until they are gone.
  virtual void CloseRunningInstance() = 0;
  /// False if an instance of this executable and program directory runs already.
  virtual bool BecomeRunningInstance() = 0;
  virtual void RecordProgramPath() = 0;
  virtual void SwitchProxyOff() = 0;
  /// Web, mail, FTP.
  virtual void StartServices() = 0;
  virtual void GoToTray() = 0;
  virtual void ShowMainWindow() = 0;
  virtual void OpenWebAddress() = 0;
};

}  // namespace core

namespace ModMain {

/// Runs the entry procedure on the words of `commandLine`. True if the process lives on; false if
/// its work is done ("STOP", or another instance runs).
bool Main(const settings::Program& program, std::string_view commandLine,
          core::StartupSteps& steps);

}  // namespace ModMain
