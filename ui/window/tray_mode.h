#pragma once

// The two modes of the main window and the transitions between them. In window mode the window is
// visible and there is no tray icon; in tray mode it is the other way round. On a desktop without a
// tray the window is minimised instead, so that it can always be found. If there is a manager
// password, the window is shown only to users who know it.

#include <wx/dialog.h>
#include <wx/toplevel.h>

#include <functional>
#include <memory>
#include <string>

#include "settings/program.h"
#include "ui/window/open_dialogs.h"
#include "ui/window/remembered_place.h"
#include "ui/window/tray.h"

namespace ui {

class TrayMode : private TrayHost {
 public:
  using MenuMaker = std::function<std::unique_ptr<wxMenu>()>;

  /// `onSeen` is called whenever the visibility of the window may have changed.
  TrayMode(wxFrame& window, RememberedPlace& place, OpenDialogs& dialogs, MenuMaker makeMenu,
           std::function<void(bool)> onSeen);

  /// Must be called before the window is shown. `onClose` is called when a user without the
  /// password would be left with neither window nor icon.
  void Attach(const settings::Program& program, std::function<void()> onClose);

  /// Shows the window, after asking for the manager password if there is one, and an open dialog in
  /// front of it. Without the password the program stays in the tray, or ends if there is no tray.
  void Open();

  /// The action of mnuShowSystemTray.
  void GoToTray();
  bool IsInTray() const { return inTray_; }

  /// Whether the user may see what the window shows: it is visible already, or the user enters the
  /// password.
  bool MayUse();

  /// Shows a notice, at the icon if there is one.
  void Tell(const std::string& title, const std::string& text);

  void UpdateMenu() { tray_->UpdateMenu(); }
  void SetState(TrayState state) { tray_->SetState(state); }

  /// Removes the icon and keeps the window from opening again. False if already called.
  bool End();

 private:
  bool AskForPassword();
  void Appear();
  void MinimiseInstead();
  void OpenFromTaskBar();
  void GoToTrayOrEnd();
  void HideBehindIcon();
  void TellWhereItIs();
  void LeaveTray();
  void RememberPlace();
  void OnIconize(wxIconizeEvent& event);
  std::unique_ptr<wxMenu> MakeMenuForTray() override { return makeMenu_(); }
  wxWindow* InnermostDialog() override { return dialogs_.Innermost(); }
  void OnTrayRestore() override { Open(); }
  void OnTrayLost() override;

  wxFrame& window_;
  RememberedPlace& place_;
  OpenDialogs& dialogs_;
  MenuMaker makeMenu_;
  std::function<void(bool)> onSeen_;
  const settings::Program* program_ = nullptr;
  std::function<void()> onClose_;
  std::unique_ptr<Tray> tray_;
  bool inTray_ = false;
  bool opened_ = false;  // shown at least once
  bool closing_ = false;
  bool asking_ = false;         // for the password
  bool wentMinimised_ = false;  // to the tray, and not active since
  bool insteadOfTray_ = false;  // minimised, and restored only with the password
  bool minimising_ = false;     // asked for, and not done yet
};

}  // namespace ui
