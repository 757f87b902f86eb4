#pragma once

// The main window: per service what service control has to say of it, and a button.

#include <wx/frame.h>

#include <array>
#include <functional>

#include "core/manager_view.h"
#include "core/service_control.h"

class wxButton;
class wxSizer;
class wxStaticText;

namespace ui {

class frmMain : public wxFrame, public core::ManagerView {
 public:
  frmMain();

  void Attach(core::ServiceControl& control, std::function<void()> onClose);

  void SetResult(core::ServiceKind service, const std::string& text) override;
  void SetAddress(core::ServiceKind service, const std::string& text) override;
  void EnableAddress(core::ServiceKind service, bool enabled) override;
  void SetHint(core::ServiceKind service, const std::string& text) override;
  void SetRootDir(core::ServiceKind service, const std::string& path) override;
  void ShowButtons(core::ServiceKind service, bool running) override;
  void SwitchMenuItems(core::ServiceKind service, bool running) override;
  void SetStatusPanel(core::ServiceKind service, bool on, const std::string& text) override;

 private:
  struct Frame {
    wxStaticText* result;
    wxStaticText* address;
    wxStaticText* hint;
    wxStaticText* rootDir;
    wxButton* start;
    wxButton* stop;
  };

  wxSizer* MakeFrame(core::ServiceKind service, const wxString& title);
  Frame& Of(core::ServiceKind service) { return frames_[static_cast<std::size_t>(service)]; }
  void OnStart(core::ServiceKind service);
  void OnStop(core::ServiceKind service);

  std::array<Frame, 3> frames_;
  core::ServiceControl* control_ = nullptr;
  std::function<void()> onClose_;
};

}  // namespace ui
