#include "ui/window/tray_mode.h"

#include <wx/frame.h>
#include <wx/menu.h>

#include <utility>

#include "settings/application_settings.h"
#include "settings/user_state.h"
#include "ui/dialogs/login_dialog.h"
#include "ui/dialogs/tip_of_the_day.h"
#include "ui/window/notice.h"

namespace ui {
namespace {

bool PasswordIsSet(const settings::Program& program) {
  return !settings::GetSetting(program.executable, "ManagerPwd", "PWD").empty();
}

}  // namespace

TrayMode::TrayMode(wxFrame& window, RememberedPlace& place, OpenDialogs& dialogs,
                   MenuMaker makeMenu, std::function<void(bool)> onSeen)
    : window_(window),
      place_(place),
      dialogs_(dialogs),
      makeMenu_(std::move(makeMenu)),
      onSeen_(std::move(onSeen)),
      tray_(MakeTray(window, *this)) {
  window_.Bind(wxEVT_ICONIZE, &TrayMode::OnIconize, this);
  window_.Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    event.Skip();
    if (event.GetActive()) wentMinimised_ = false;
  });
  window_.Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
    event.Skip();
    if (event.GetEventObject() == &window_) onSeen_(event.IsShown() && !window_.IsIconized());
  });
}

void TrayMode::Attach(const settings::Program& program, std::function<void()> onClose) {
  program_ = &program;
  onClose_ = std::move(onClose);
}

void TrayMode::Open() {
  if (closing_) return;
  if (asking_) return dialogs_.Raise();
  if (window_.IsShown() && !window_.IsIconized()) {
    window_.Raise();
    return dialogs_.Raise();
  }
  if (AskForPassword()) return Appear();
  if (!inTray_) GoToTrayOrEnd();
}

void TrayMode::Appear() {
  LeaveTray();
  window_.Show();
  if (window_.IsIconized()) window_.Iconize(false);
  window_.Raise();
  dialogs_.Raise();
  const bool isFirst = !std::exchange(opened_, true);
  // A new user sees the first steps, and nothing in front of them.
  if (isFirst && RememberedPlace::IsKnown()) frmTip::ShowUnlessTurnedOff(&window_, *program_);
}

// Without a tray, the window stays reachable in the task bar.
void TrayMode::MinimiseInstead() {
  insteadOfTray_ = true;
  minimising_ = true;
  window_.Show();
  window_.Iconize();
}

// The user restores a window that is minimised instead of being in the tray.
void TrayMode::OpenFromTaskBar() {
  if (!insteadOfTray_ || asking_ || closing_) return;
  window_.Hide();
  if (!AskForPassword()) return MinimiseInstead();
  insteadOfTray_ = false;
  Appear();
  place_.Take();  // window managers forget it with the minimised window
}

void TrayMode::OnTrayLost() {
  if (!inTray_ || closing_) return;
  LeaveTray();
  inTray_ = tray_->Add();  // of another kind
  if (!inTray_) MinimiseInstead();
}

bool TrayMode::AskForPassword() {
  if (!PasswordIsSet(*program_)) return true;
  asking_ = true;
  frmPassWord login(nullptr, *program_);
  login.SetIcons(window_.GetIcons());  // no parent to inherit them from
  login.ShowModal();
  asking_ = false;
  return login.LoginOK();
}

bool TrayMode::MayUse() { return window_.IsShown() || (!asking_ && AskForPassword()); }

void TrayMode::GoToTrayOrEnd() {
  inTray_ = tray_->Add();
  if (!inTray_) onClose_();
}

void TrayMode::GoToTray() {
  if (inTray_) return;
  RememberPlace();
  if (tray_->Add()) return HideBehindIcon();
  if (!opened_) return MinimiseInstead();
  if (!window_.IsIconized()) window_.Iconize();
}

void TrayMode::HideBehindIcon() {
  inTray_ = true;
  frmTip::Leave(&window_);
  window_.Hide();
  TellWhereItIs();
}

// Once per user: a window that just disappears looks like a program that has ended.
void TrayMode::TellWhereItIs() {
  if (!opened_ || settings::Remembered("Tray", "Told").value_or(0) != 0) return;
  settings::Remember("Tray", "Told", 1);
  Tell("Tarnwerk 仍在运行", "服务照常工作。点击托盘中的图标可以再次显示窗口。");
}

// A notice of the toolkit's would bring a second icon.
void TrayMode::Tell(const std::string& title, const std::string& text) {
  if (!inTray_ || !tray_->Inform(title, text)) ShowNotice(window_, title, text);
}

void TrayMode::LeaveTray() {
  if (std::exchange(inTray_, false)) tray_->Remove();
}

void TrayMode::RememberPlace() {
  if (opened_) place_.Remember();
}

void TrayMode::OnIconize(wxIconizeEvent& event) {
  event.Skip();
  onSeen_(window_.IsShown() && !event.IsIconized());
  if (!event.IsIconized()) {
    // Some window managers announce a window as restored before they minimise it.
    if (insteadOfTray_ && !minimising_) window_.CallAfter([this] { OpenFromTaskBar(); });
    return;
  }
  minimising_ = false;
  // Some window managers first show the window minimised, as it was when it was hidden. Undo that.
  if (std::exchange(wentMinimised_, false)) return window_.Iconize(false);
  if (inTray_ || !tray_->Add()) return;
  HideBehindIcon();
  wentMinimised_ = true;
}

bool TrayMode::End() {
  // The request to close may be repeated, and the loop serves all requests before it ends.
  if (std::exchange(closing_, true)) return false;
  RememberPlace();
  LeaveTray();
  return true;
}

}  // namespace ui
