#pragma once

// The two modes of the main window and what leads from one to the other. In window mode the window
// is visible and has no tray icon; in tray mode it is the other way round. Where the desktop has no
// tray the window is minimised instead, so that it can always be found. The window is shown only to
// users who know the manager password, if there is one.

#include <wx/toplevel.h>

#include <functional>
#include <memory>

#include "settings/program.h"
#include "ui/window/remembered_place.h"
#include "ui/window/tray.h"

namespace ui {

class TrayMode : private TrayHost {
 public:
  using MenuMaker = std::function<std::unique_ptr<wxMenu>()>;

  /// `onSeen` is called with whether the window can be seen, whenever that may have changed.
  TrayMode(wxFrame& window, RememberedPlace& place, MenuMaker makeMenu,
           std::function<void(bool)> onSeen);

  /// Before the window is shown. `onClose` is called where a user without the password is left
  /// with neither window nor icon.
  void Attach(const settings::Program& program, std::function<void()> onClose);

  /// Shows the window, once the user has given the manager password if there is one. Without it
  /// the program stays in the tray, or ends where there is none.
  void Open();

  /// mnuShowSystemTray
  void GoToTray();
  bool IsInTray() const { return inTray_; }

  /// Whether the user may see what the window would show: it is there already, or he gives the
  /// password.
  bool MayUse();

  void UpdateMenu() { tray_->UpdateMenu(); }

  /// Takes the icon away; the window does not open any more. False if that was done before.
  bool End();

 private:
  bool AskForPassword();
  void Appear();
  void OpenFromTaskBar();
  void GoToTrayOrEnd();
  void HideBehindIcon();
  void LeaveTray();
  void RememberPlace();
  void OnIconize(wxIconizeEvent& event);
  std::unique_ptr<wxMenu> MakeMenuForTray() override { return makeMenu_(); }
  void OnTrayRestore() override { Open(); }

  wxFrame& window_;
  RememberedPlace& place_;
  MenuMaker makeMenu_;
  std::function<void(bool)> onSeen_;
  const settings::Program* program_ = nullptr;
  std::function<void()> onClose_;
  std::unique_ptr<Tray> tray_;
  bool inTray_ = false;
  bool opened_ = false;  // has been shown at least once
  bool closing_ = false;
  bool asking_ = false;         // for the password
  bool wentMinimised_ = false;  // to the tray, and has not been active since
};

}  // namespace ui
