#include "ui/window/tray.h"

#include <wx/bmpbndl.h>
#include <wx/icon.h>
#include <wx/menu.h>
#include <wx/taskbar.h>

#include <array>
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
constexpr std::array<const char*, 4> kIconNames = {
    "tarnwerk-tray-off", "tarnwerk-tray", "tarnwerk-tray-connected", "tarnwerk-tray-failed"};

const char* IconName(TrayState state) { return kIconNames[static_cast<std::size_t>(state)]; }

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
  explicit LinuxTray(TrayHost& host) : host_(host) {}
  ~LinuxTray() override { LinuxTray::Remove(); }

  bool Add() override { return AddNotifier() || AddEmbedded(); }

  void Remove() override {
    if (notifier_) notifier_->Hide();
    embedded_.reset();
    shown_ = false;
  }

  bool Inform(const std::string&, const std::string&) override { return false; }

  void UpdateMenu() override {
    if (!shown_ || !notifier_) return;
    // The old menu must outlive its use by the notifier.
    auto fresh = host_.MakeMenuForTray();
    // While a dialog is modal, the toolkit ignores the menus of all other windows.
    fresh->SetInvokingWindow(host_.InnermostDialog());
    notifier_->SetMenu(fresh->m_menu);
    menu_ = std::move(fresh);
  }

  void SetState(TrayState state) override {
    if (std::exchange(state_, state) == state) return;
    if (notifier_) notifier_->SetIcon(IconName(state));
    if (embedded_ && shown_) embedded_->SetIcon(EmbeddedPicture(), kTrayTip);
  }

 private:
  bool AddNotifier() {
    if (!platform::StatusNotifier::IsAvailable()) return false;
    if (!notifier_) {
      const std::filesystem::path folder = platform::StateDirectory();
      if (!SaveIcons(folder)) return false;
      notifier_ = std::make_unique<platform::StatusNotifier>(IconName(state_), folder, kTrayTip,
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
    shown_ = embedded_->SetIcon(EmbeddedPicture(), kTrayTip);
    return shown_;
  }

  wxBitmapBundle EmbeddedPicture() const { return {TrayPicture(state_, kIconSize)}; }

  // The desktop reads the icons from files.
  static bool SaveIcons(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    for (const TrayState state :
         {TrayState::kOff, TrayState::kRunning, TrayState::kConnected, TrayState::kFailed}) {
      const std::filesystem::path file = folder / (std::string(IconName(state)) + ".png");
      const wxBitmap picture = TrayPicture(state, kIconSize);
      if (!picture.SaveFile(Shown(file.string()), wxBITMAP_TYPE_PNG)) return false;
    }
    return true;
  }

  TrayState state_ = TrayState::kOff;
  TrayHost& host_;
  bool shown_ = false;
  std::unique_ptr<wxMenu> menu_;
  std::unique_ptr<platform::StatusNotifier> notifier_;
  std::unique_ptr<EmbeddedIcon> embedded_;
};

}  // namespace

std::unique_ptr<Tray> MakeTray(wxFrame&, TrayHost& host) {
  return std::make_unique<LinuxTray>(host);
}

}  // namespace ui
