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
  WindowsTray(wxFrame& window, const wxBitmapBundle& icon, TrayHost& host)
      : window_(window),
        host_(host),
        notify_(window.GetHWND(), [this](unsigned code) { OnMouse(code); }) {
    icon_.CopyFromBitmap(icon.GetBitmap(wxSize(notify_.IconSize(), notify_.IconSize())));
  }

  bool Add() override { return notify_.Add(icon_.GetHICON(), kTrayTip); }
  void Remove() override { notify_.Remove(); }
  void UpdateMenu() override {}  // the menu is created when it is opened

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
  wxIcon icon_;
  platform::NotifyIcon notify_;
};

}  // namespace

std::unique_ptr<Tray> MakeTray(wxFrame& window, const wxBitmapBundle& icon, TrayHost& host) {
  return std::make_unique<WindowsTray>(window, icon, host);
}

}  // namespace ui
