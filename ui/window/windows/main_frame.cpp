#include "ui/window/main_frame.h"

#include <wx/app.h>
#include <wx/button.h>

#include "platform/close_button.h"

namespace ui {
namespace {

constexpr const wchar_t* kWindowClass = L"ThunderRT6FormDC";
constexpr int kDefaultBackground = -1;
constexpr int kNoExtraStyles = 0;

bool HasLetter(const wxButton& button, int key) {
  wxString label;
  const int index = wxControl::FindAccelIndex(button.GetLabel(), &label);
  return index >= 0 && wxToupper(label[static_cast<std::size_t>(index)]) == wxUniChar(key);
}

// The button with that letter that can be pressed now.
wxButton* FindButton(const wxWindow& in, int key) {
  for (wxWindow* child : in.GetChildren()) {
    if (!child->IsShown() || !child->IsEnabled() || child->IsTopLevel()) continue;
    auto* button = dynamic_cast<wxButton*>(child);
    if (button != nullptr && HasLetter(*button, key)) return button;
    if (wxButton* below = FindButton(*child, key)) return below;
  }
  return nullptr;
}

// The system looks for the letter in the innermost panel with the focus only, so those of a page
// would do nothing while the side bar has it.
void PressByLetter(const wxWindow& in, wxKeyEvent& event) {
  wxButton* button =
      event.GetModifiers() == wxMOD_ALT ? FindButton(in, event.GetKeyCode()) : nullptr;
  if (button == nullptr) return event.Skip();
  button->SetFocus();
  // Later, because what the button does may wait for the user.
  button->CallAfter([button] {
    wxCommandEvent click(wxEVT_BUTTON, button->GetId());
    click.SetEventObject(button);
    button->Command(click);
  });
}

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
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) { PressByLetter(*this, event); });
  platform::WatchCloseButton(GetHWND(), [this](bool closing) { closedByUser_ = closing; });
}

}  // namespace ui
