#include "ui/window/tray.h"

#include <wx/bitmap.h>
#include <wx/icon.h>
#include <wx/menu.h>
#include <wx/taskbar.h>

#include <filesystem>
#include <utility>

#include "platform/status_notifier.h"
#include "platform/system_folders.h"
#include "ui/controls/toolkit_text.h"

// Current desktops show icons announced on the session bus; older ones embed a small window, which
// the toolkit supports.

namespace ui {
namespace {

constexpr int kIconSize = 64;
constexpr const char* kIconName = "tarnwerk-tray";

class EmbeddedIcon : public wxTaskBarIcon {
 public:
  explicit EmbeddedIcon(TrayHost& host) : host_(host) {
    Bind(wxEVT_TASKBAR_LEFT_DCLICK, [this](wxTaskBarIconEvent&) { host_.OnTrayRestore(); });
  }

 protected:
  wxMenu* CreatePopupMenu() override { return host_.MakeMenuForTray().release(); }

 private:
  TrayHost& host_;
};

class LinuxTray : public Tray {
 public:
  LinuxTray(wxBitmapBundle icon, TrayHost& host) : icon_(std::move(icon)), host_(host) {}
  ~LinuxTray() override { LinuxTray::Remove(); }

  bool Add() override { return AddNotifier() || AddEmbedded(); }

  void Remove() override {
    if (notifier_) notifier_->Hide();
    embedded_.reset();
    shown_ = false;
  }

  void UpdateMenu() override {
    if (!shown_ || !notifier_) return;
    // The old menu must outlive its use by the notifier.
    auto fresh = host_.MakeMenuForTray();
    // While a dialog is modal, the toolkit ignores the menus of all other windows.
    fresh->SetInvokingWindow(host_.InnermostDialog());
    notifier_->SetMenu(fresh->m_menu);
    menu_ = std::move(fresh);
  }

 private:
  bool AddNotifier() {
    if (!platform::StatusNotifier::IsAvailable()) return false;
    if (!notifier_) {
      const std::filesystem::path folder = platform::StateDirectory();
      if (!SaveIcon(folder / (std::string(kIconName) + ".png"))) return false;
      notifier_ = std::make_unique<platform::StatusNotifier>(kIconName, folder, kTrayTip,
                                                             [this] { host_.OnTrayLost(); });
    }
    shown_ = true;
    UpdateMenu();
    notifier_->Show();
    return true;
  }

  bool AddEmbedded() {
    if (!wxTaskBarIcon::IsAvailable()) return false;
    embedded_ = std::make_unique<EmbeddedIcon>(host_);
    shown_ = embedded_->SetIcon(icon_, kTrayTip);
    return shown_;
  }

  // The desktop reads the icon from a file.
  bool SaveIcon(const std::filesystem::path& file) const {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    return icon_.GetBitmap(wxSize(kIconSize, kIconSize))
        .SaveFile(Shown(file.string()), wxBITMAP_TYPE_PNG);
  }

  wxBitmapBundle icon_;
  TrayHost& host_;
  bool shown_ = false;
  std::unique_ptr<wxMenu> menu_;
  std::unique_ptr<platform::StatusNotifier> notifier_;
  std::unique_ptr<EmbeddedIcon> embedded_;
};

}  // namespace

std::unique_ptr<Tray> MakeTray(wxFrame&, const wxBitmapBundle& icon, TrayHost& host) {
  return std::make_unique<LinuxTray>(icon, host);
}

}  // namespace ui
