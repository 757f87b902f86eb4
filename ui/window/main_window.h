#pragma once

// The main window: content (a side bar and five pages), menu, status bar and tray icon. It
// assembles its parts, shows the reports of service control and dispatches the menu. User commands
// are in Commands, the periodic checks in Survey, and the switch between window and tray in
// TrayMode.

#include <functional>
#include <memory>

#include "core/manager_view.h"
#include "ui/window/commands.h"
#include "ui/window/content.h"
#include "ui/window/main_frame.h"
#include "ui/window/main_menu.h"
#include "ui/window/manager.h"
#include "ui/window/open_dialogs.h"
#include "ui/window/remembered_place.h"
#include "ui/window/survey.h"
#include "ui/window/tray_mode.h"

namespace ui {

class frmMain : public MainFrame, public core::ManagerView {
 public:
  frmMain();
  ~frmMain() override;

  /// Sets the services to act on, and the handler for the end of the program. Must be called before
  /// anything is shown.
  void Attach(const Manager& manager, std::function<void()> onClose);

  /// Shows the window if the user is allowed to see it (ui/window/tray_mode.h).
  void Open() { mode_.Open(); }

  /// The action of mnuShowSystemTray.
  void GoToTray() { mode_.GoToTray(); }
  bool IsInTray() const { return mode_.IsInTray(); }

  /// Removes the tray icon, dismisses every dialog, and calls `done` once none is open.
  void CloseEverything(std::function<void()> done);

  void ShowOutcome(const core::Outcome& outcome) override;

  // Owned by the toolkit, like all controls.
  StatusBar* stbInfo;
  Content* content;
  WelcomeFrame* fraWelcome;
  ServiceFrame* fraWeb;
  ServiceFrame* fraFtp;
  ServiceFrame* fraMail;

 private:
  void BindTabKeys();
  void ShowInFrame(const core::Outcome& outcome);
  void UpdateStatus(core::ServiceKind service, ServiceState state, const std::string& text);
  std::unique_ptr<wxMenu> MakeMenuForTray();
  void ShowTrayState(bool connected);
  void MarkStartWithSystem();
  void View(core::ServiceKind service);
  void OnMenu(wxCommandEvent& event);

  std::unique_ptr<Manager> manager_;
  std::function<void()> onClose_;
  OpenDialogs dialogs_;
  ServiceStates running_ = {};  // as shown in the menu
  ServiceStates failed_ = {};   // the last start
  bool connected_ = false;      // a client, when last looked
  Commands commands_;
  Survey survey_;
  RememberedPlace place_;
  TrayMode mode_;
};

}  // namespace ui
