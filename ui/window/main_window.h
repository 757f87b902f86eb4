#pragma once

// The main window: a side bar that selects one of four pages (the overview and one per service), a
// menu, a status bar, and the tray icon that the window can hide behind. It shows what service
// control tells it and passes on what the user presses.
//
// It has two modes. In window mode it is visible and has no icon; in tray mode it is the other way
// round. Where the desktop has no tray it is minimised instead, so that it can always be found.

#include <wx/timer.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"
#include "core/traffic_text.h"
#include "ui/pages/service_frame.h"
#include "ui/pages/welcome_frame.h"
#include "ui/window/main_frame.h"
#include "ui/window/main_menu.h"
#include "ui/window/manager.h"
#include "ui/window/open_dialogs.h"
#include "ui/window/tray.h"

namespace ui {

class FolderTree;
class MailUserList;
class Selector;
class StatusBar;

class frmMain : public MainFrame, public core::ManagerView, private TrayHost {
 public:
  frmMain();
  ~frmMain() override;

  /// What the window acts on, and what is to happen when the user ends the program. Before anything
  /// is shown.
  void Attach(const Manager& manager, std::function<void()> onClose);

  /// Shows the window, once the user has given the manager password if there is one. Without it
  /// the program stays in the tray, or ends where there is none.
  void Open();

  /// mnuShowSystemTray
  void GoToTray();
  bool IsInTray() const { return inTray_; }

  /// Takes the tray icon away, dismisses every dialog, and calls `done` once nothing is open.
  void CloseEverything(std::function<void()> done);

  /// Shows a service's page with its settings loaded anew; a click on its selector.
  void SelectService(core::ServiceKind service);
  void SelectWelcome();  // picSelect

  // core::ManagerView
  void SetResult(core::ServiceKind service, const std::string& text) override;
  void SetAddress(core::ServiceKind service, const std::string& text) override;
  void EnableAddress(core::ServiceKind service, bool enabled) override;
  void SetHint(core::ServiceKind service, const std::string& text) override;
  void SetRootDir(core::ServiceKind service, const std::string& path) override;
  void ShowButtons(core::ServiceKind service, bool running) override;
  void SwitchMenuItems(core::ServiceKind service, bool running) override;
  void SetStatusPanel(core::ServiceKind service, bool on, const std::string& text) override;

  WelcomeFrame* fraWelcome;
  ServiceFrame* fraWeb;
  ServiceFrame* fraFtp;
  ServiceFrame* fraMail;
  StatusBar* stbInfo;
  FolderTree* tvWebDir;
  MailUserList* lvMailUser;
  wxStaticText* lblMessages;  // how many the selected mail user has

 private:
  // Making (main_window.cpp)
  void MakeContent();
  wxWindow* MakeSideBar();
  wxSizer* MakePages();
  ServiceFrame* MakeServiceFrame(core::ServiceKind service);
  void FillWebFrame();
  void FillFtpFrame();
  void FillMailFrame();
  void BindMenu();
  void BindTabKeys();
  void TakeRememberedPlace();
  wxSize SizeForEveryPage();
  void RememberPlace() const;

  // What the user does (main_window_commands.cpp)
  void Start(core::ServiceKind service);
  void Stop(core::ServiceKind service);
  void StartAll();
  void StopAll();
  void OpenAddress(core::ServiceKind service);
  void OpenRoot(core::ServiceKind service);
  void AskForDomain(core::ServiceKind service);
  void ShowOptions(core::ServiceKind service);
  bool AskForOptions(core::ServiceKind service);
  void TakeOver(core::ServiceKind service);
  void ShowGeneralOptions();
  void AddVirtualDirectory();
  void AddMailUser();
  void EditMailUser();
  void DeleteMailUser();
  void ShowHelp();
  void ShowAbout();
  void ShowTips();
  void LoadMailUsers();
  void ShowMessagesOfSelected();
  void PutPage();
  void RefreshTree();
  void ShowRootDir(core::ServiceKind service);
  void MakeRoot(core::ServiceKind service);
  std::optional<core::Diagnosis> Diagnose(core::ServiceKind service);
  void ShowSettingsFault(core::ServiceKind service);
  void Follow(core::ServiceKind service, const core::Diagnosis& diagnosis);

  // What it looks at by itself (main_window_watch.cpp)
  void WatchWhileSeen(bool seen);
  void Look();
  void ShowTraffic();
  void Survey();
  void ShowReach(core::ServiceKind service);
  void ShowFirstSteps();
  void CopyForUser(const std::string& text);

  // The two modes
  bool MayOpen();
  void Appear();
  void OpenFromTaskBar();
  void GoToTrayOrEnd();
  void HideBehindIcon();
  void LeaveTray();
  void OnIconize(wxIconizeEvent& event);
  std::unique_ptr<wxMenu> MakeMenuForTray() override;
  void OnTrayRestore() override { Open(); }
  void OnMenu(wxCommandEvent& event);

  void ShowPage(wxWindow* page);
  ServiceFrame& FrameOf(core::ServiceKind service);

  std::unique_ptr<Manager> manager_;
  std::function<void()> onClose_;
  OpenDialogs dialogs_;
  std::unique_ptr<Tray> tray_;
  wxPanel* content_;                    // everything between menu and status bar
  std::array<Selector*, 4> selectors_;  // the overview's, then the services'
  std::array<ServiceFrame*, 3> frames_;
  ServiceStates running_ = {};           // as the menu shows them
  std::array<bool, 3> failed_ = {};      // the last start
  std::array<bool, 3> shownFault_ = {};  // of Server.ini, and not of a start
  wxTimer watch_;                        // runs while the window can be seen
  int looks_ = 0;                        // since it runs
  core::TrafficRate rate_;
  bool inTray_ = false;
  bool opened_ = false;  // has been shown at least once
  bool closing_ = false;
  bool asking_ = false;         // for the password
  bool wentMinimised_ = false;  // to the tray, and has not been active since
};

}  // namespace ui
