// The main window and its tray icon: which of the two is there, and what leads from one to the
// other.

#include <wx/menu.h>

#include <utility>

#include "platform/application_settings.h"
#include "ui/dialogs/login_dialog.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/window/main_window.h"

namespace ui {
namespace {

bool PasswordIsSet(const settings::Program& program) {
  return !platform::GetSetting(program.executable, "ManagerPwd", "PWD").empty();
}

}  // namespace

void frmMain::Open() {
  if (IsShown() && !IsIconized()) return Raise();
  if (asking_ || closing_) return;
  if (!MayOpen()) return inTray_ ? void() : GoToTrayOrEnd();
  Appear();
}

void frmMain::Appear() {
  LeaveTray();
  Show();
  if (IsIconized()) Iconize(false);
  Raise();
  if (!std::exchange(opened_, true)) frmTip::ShowUnlessTurnedOff(this, manager_->program);
}

// The user has restored what a start without a tray has put into the task bar.
void frmMain::OpenFromTaskBar() {
  if (opened_ || asking_ || closing_) return;
  Hide();
  if (MayOpen()) {
    TakeRememberedPlace();
    Appear();
  } else {
    Show();
    Iconize();
  }
}

// Nobody gets the window without the password, if there is one.
bool frmMain::MayOpen() {
  if (!PasswordIsSet(manager_->program)) return true;
  asking_ = true;
  frmPassWord login(nullptr, manager_->program);
  login.SetIcons(GetIcons());  // it has no parent to take them from
  login.ShowModal();
  asking_ = false;
  return login.LoginOK();
}

void frmMain::GoToTrayOrEnd() {
  if (tray_->Add()) {
    inTray_ = true;
  } else {
    onClose_();
  }
}

void frmMain::GoToTray() {
  if (inTray_) return;
  RememberPlace();
  if (!tray_->Add()) {
    // No tray here: the task bar is where it can be found.
    Show();
    if (!IsIconized()) Iconize();
    return;
  }
  HideBehindIcon();
}

void frmMain::HideBehindIcon() {
  inTray_ = true;
  frmTip::Leave(this);
  Hide();
}

void frmMain::LeaveTray() {
  if (!std::exchange(inTray_, false)) return;
  tray_->Remove();
}

void frmMain::OnIconize(wxIconizeEvent& event) {
  event.Skip();
  WatchWhileSeen(IsShown() && !event.IsIconized());
  if (!event.IsIconized() && IsShown() && !opened_) CallAfter(&frmMain::OpenFromTaskBar);
  if (!event.IsIconized()) return;
  // Window managers show it first as it went, which the user does not mean.
  if (std::exchange(wentMinimised_, false)) return Iconize(false);
  if (inTray_ || !tray_->Add()) return;
  HideBehindIcon();
  wentMinimised_ = true;
}

std::unique_ptr<wxMenu> frmMain::MakeMenuForTray() {
  auto menu = MakeTrayMenu(running_);
  menu->Bind(wxEVT_MENU, &frmMain::OnMenu, this);
  return menu;
}

void frmMain::CloseEverything(std::function<void()> done) {
  // Who wants it closed may ask again and again, and the loop first serves all that is asked.
  if (std::exchange(closing_, true)) return;
  RememberPlace();
  LeaveTray();
  WatchWhileSeen(false);
  dialogs_.DismissAll(std::move(done));
}

}  // namespace ui
