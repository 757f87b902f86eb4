#include "ui/window/main_frame.h"

#include <wx/app.h>

#include "platform/close_button.h"
#include "ui/window/windows/access_keys.h"

namespace ui {
namespace {

constexpr const wchar_t* kWindowClass = L"ThunderRT6FormDC";
constexpr int kDefaultBackground = -1;
constexpr int kNoExtraStyles = 0;

}  // namespace

// The steps of wxFrame::Create, which cannot use a custom window class.
MainFrame::MainFrame(const wxString& caption) {
  const wchar_t* windowClass = wxApp::GetRegisteredClassName(
      kWindowClass, kDefaultBackground, kNoExtraStyles, wxApp::RegClass_OnlyNR);
  wxTopLevelWindows.Append(this);
  CreateBase(nullptr, wxID_ANY, wxDefaultPosition, GetDefaultSize(),
             wxDEFAULT_FRAME_STYLE | wxTAB_TRAVERSAL, wxDefaultValidator, "frmMain");
  WXDWORD extendedStyle = 0;
  const WXDWORD style = MSWGetCreateWindowFlags(&extendedStyle);
  MSWCreate(windowClass, caption.t_str(), wxDefaultPosition, GetDefaultSize(), style,
            extendedStyle);
  SetTitle(caption);
  closedByUser_ = false;
  ServeAccessKeys();
  platform::WatchCloseButton(GetHWND(), [this](bool closing) { closedByUser_ = closing; });
}

}  // namespace ui
