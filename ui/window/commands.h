#pragma once

// What the user can do in the main window: start and stop services, open their addresses, change
// options. What concerns folders is done by FolderCommands, mail by MailCommands. Commands show
// their results on the pages. They do not know whether the window or the tray icon is visible
// (ui/window/tray_mode.h).

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "ui/pages/service_commands.h"
#include "ui/window/folder_commands.h"
#include "ui/window/mail_commands.h"
#include "ui/window/main_menu.h"
#include "ui/window/manager.h"

class wxFrame;

namespace ui {

class Content;
class StatusBar;
class Survey;

class Commands : public ServiceCommands {
 public:
  /// `running` is what the menu shows; a service that failed to stop is still running there. All
  /// arguments must outlive this object.
  Commands(wxFrame& window, StatusBar& status, const ServiceStates& running)
      : window_(window),
        status_(status),
        running_(running),
        folders_(window, status, [this](core::ServiceKind service) { TakeOver(service); }),
        mail_(window) {}

  /// Sets where commands show their results. Must be called before any command.
  void ActOn(Content& content, Survey& survey);

  /// Must be called before any command except SelectWelcome.
  void Attach(const Manager& manager);

  void SelectWelcome();

  /// Reloads a service's settings and shows its page, as a click on its selector does.
  void SelectService(core::ServiceKind service);

  /// Shows the error log, explained.
  void SelectProblems();
  void OpenErrorLog();

  /// Asks before clients are cut off, as stops do. False if the user would rather not.
  bool MayEnd();

  void StartAll();
  void StopAll();
  void PutPage();

  /// Copies the address of a running service for the user to pass on.
  void GiveFirstAddress();

  /// Shows the open connections of a service that has some.
  void ShowConnected();

  void Start(core::ServiceKind service) override;
  void Stop(core::ServiceKind service) override;
  void Restart(core::ServiceKind service) override;
  void AskForDomain(core::ServiceKind service) override;
  void ShowOptions(core::ServiceKind service) override;
  void ChangePort(core::ServiceKind service) override;
  void ChooseAnswers() override;
  void AnswerForBrowsers() override;
  void TestReach(core::ServiceKind service) override;
  void GiveAddress(const std::string& address) override;
  void OpenAddress(core::ServiceKind service) override;
  void OpenRoot(core::ServiceKind service) override { folders_.OpenRoot(service); }
  void MakeRoot(core::ServiceKind service) override { folders_.MakeRoot(service); }
  void ChangeRoot(core::ServiceKind service) override { folders_.ChangeRoot(service); }
  void Follow(core::ServiceKind service, const core::Diagnosis& diagnosis) override;
  void CopyForUser(const std::string& text) override;
  void OpenFolderOf(const std::string& path) override { folders_.OpenFolderOf(path); }
  void Disconnect(core::ServiceKind service, const net::ConnectionReport& connection) override;
  void ExportRecent(core::ServiceKind service) override;
  void ShowQrCode(const std::vector<std::string>& addresses) override;

  void MakeUploadFolder() { folders_.MakeUploadFolder(); }
  void ShowRootDir(core::ServiceKind service) { folders_.ShowRootDir(service); }
  FolderCommands& Folders() { return folders_; }
  void AddVirtualDirectory();

  MailCommands& Mail() { return mail_; }

  void ShowGeneralOptions();

  /// Asks how far strangers are trusted; it holds at once.
  void ShowProtection();
  bool StartsWithSystem() const;
  void ToggleStartWithSystem();
  void ShowHelp();
  void ShowAbout();
  void ShowTips();

 private:
  void ShowPage(wxWindow* page);
  void ShowSettingsFault(core::ServiceKind service);
  bool MayCutOff(const std::vector<core::ServiceKind>& services, const std::string& action);
  void Load(core::ServiceKind service);
  void ShowDomain(core::ServiceKind service);
  void ShowOptionsAt(core::ServiceKind service, std::optional<int> wrongPort);
  void TakeOver(core::ServiceKind service);
  void ShowContentIfSeen(core::ServiceKind service);

  wxFrame& window_;
  StatusBar& status_;
  const ServiceStates& running_;
  Content* content_ = nullptr;
  Survey* survey_ = nullptr;
  const Manager* manager_ = nullptr;
  FolderCommands folders_;
  MailCommands mail_;
  std::array<bool, core::kServices.size()> shownFault_ = {};  // a fault of Server.ini
};

}  // namespace ui
