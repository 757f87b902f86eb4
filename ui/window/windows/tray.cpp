#include "ui/window/tray.h"

#include <wx/frame.h>
#include <wx/icon.h>
#include <wx/menu.h>

#include <utility>

#include "platform/notify_icon.h"

namespace ui {
namespace {

// Mouse messages on the icon. The codes and their effects are fixed.
constexpr unsigned kRightButtonDown = 0x204;
constexpr unsigned kMiddleDoubleClick = 0x209;
constexpr unsigned kSetCursor = 0x20;

class WindowsTray : public Tray {
 public:
  WindowsTray(wxFrame& window, TrayHost& host)
      : window_(window),
        host_(host),
        notify_(window.GetHWND(), [this](unsigned code) { OnMouse(code); }) {
    icon_.CopyFromBitmap(TrayPicture(state_, notify_.IconSize()));
  }

  bool Add() override { return notify_.Add(icon_.GetHICON(), kTrayTip); }
  void Remove() override { notify_.Remove(); }
  bool Inform(const std::string& title, const std::string& text) override {
    return notify_.Inform(title, text);
  }
  void UpdateMenu() override {}  // the menu is created when it is opened
  void SetState(TrayState state) override {
    if (std::exchange(state_, state) == state) return;
    wxIcon icon;
    icon.CopyFromBitmap(TrayPicture(state, notify_.IconSize()));
    notify_.SetIcon(icon.GetHICON());
    icon_ = icon;  // the old one only now that it is no longer shown
  }

 private:
  void OnMouse(unsigned code) {
    switch (code) {
      case kRightButtonDown:
        return OpenMenu();
      case kMiddleDoubleClick:
      case kSetCursor:
        return host_.OnTrayRestore();
      default:
        return;
    }
  }

  void OpenMenu() {
    const std::unique_ptr<wxMenu> menu = host_.MakeMenuForTray();
    notify_.BeforeMenu();
    window_.PopupMenu(menu.get());
    notify_.AfterMenu();
  }

  wxFrame& window_;
  TrayHost& host_;
  TrayState state_ = TrayState::kOff;
  wxIcon icon_;
  platform::NotifyIcon notify_;
};

}  // namespace

std::unique_ptr<Tray> MakeTray(wxFrame& window, TrayHost& host) {
  return std::make_unique<WindowsTray>(window, host);
}

}  // namespace ui
