#pragma once

// The commands of a service's page. The page only reports which button was pressed; the main window
// carries the command out (ui/window/commands.h).

#include <string>
#include <vector>

#include "core/service.h"
#include "core/start_diagnosis.h"

namespace ui {

class ServiceCommands {
 public:
  virtual ~ServiceCommands() = default;

  virtual void Start(core::ServiceKind service) = 0;
  virtual void Stop(core::ServiceKind service) = 0;
  virtual void Restart(core::ServiceKind service) = 0;
  virtual void AskForDomain(core::ServiceKind service) = 0;
  virtual void ShowOptions(core::ServiceKind service) = 0;
  /// Opens the options at the port.
  virtual void ChangePort(core::ServiceKind service) = 0;
  /// Opens the Web server's options at how it answers.
  virtual void ChooseAnswers() = 0;
  /// Asks, and makes the Web server answer so that every browser shows the pages.
  virtual void AnswerForBrowsers() = 0;
  /// Tests whether others reach the service, and shows what it found on the page.
  virtual void TestReach(core::ServiceKind service) = 0;
  /// Copies an address for the user to pass on.
  virtual void GiveAddress(const std::string& address) = 0;
  virtual void OpenAddress(core::ServiceKind service) = 0;
  virtual void OpenRoot(core::ServiceKind service) = 0;
  virtual void MakeRoot(core::ServiceKind service) = 0;
  virtual void ChangeRoot(core::ServiceKind service) = 0;

  /// Applies the remedy of the diagnosis.
  virtual void Follow(core::ServiceKind service, const core::Diagnosis& diagnosis) = 0;

  virtual void CopyForUser(const std::string& text) = 0;
  /// `path`: the path text of a file or folder.
  virtual void OpenFolderOf(const std::string& path) = 0;
  virtual void Disconnect(core::ServiceKind service, const net::ConnectionReport& connection) = 0;
  virtual void ExportRecent(core::ServiceKind service) = 0;
  virtual void ShowQrCode(const std::vector<std::string>& addresses) = 0;
};

}  // namespace ui
