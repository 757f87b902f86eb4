#include "ui/window/windows/access_keys.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>

namespace ui {
namespace {

bool HasLetter(const wxWindow& window, int key) {
  wxString label;
  const int index = wxControl::FindAccelIndex(window.GetLabel(), &label);
  return index >= 0 && wxToupper(label[static_cast<std::size_t>(index)]) == wxUniChar(key);
}

void Press(wxControl& control, wxEventType type, bool on) {
  control.SetFocus();
  // Later, because what it does may wait for the user.
  control.CallAfter([&control, type, on] {
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    event.SetInt(on ? 1 : 0);
    control.Command(event);
  });
}

// The field was created after its label.
bool EnterFieldOf(const wxStaticText& label) {
  wxWindow* field = label.GetNextSibling();
  while (field != nullptr && !field->CanAcceptFocusFromKeyboard()) field = field->GetNextSibling();
  if (field == nullptr) return false;
  field->SetFocusFromKbd();
  return true;
}

// False if the letter of such a window does nothing.
bool Use(wxWindow& window) {
  if (auto* button = dynamic_cast<wxButton*>(&window)) {
    Press(*button, wxEVT_BUTTON, true);
  } else if (auto* box = dynamic_cast<wxCheckBox*>(&window)) {
    Press(*box, wxEVT_CHECKBOX, !box->GetValue());
  } else if (auto* option = dynamic_cast<wxRadioButton*>(&window)) {
    Press(*option, wxEVT_RADIOBUTTON, true);
  } else {
    const auto* label = dynamic_cast<wxStaticText*>(&window);
    return label != nullptr && EnterFieldOf(*label);
  }
  return true;
}

bool UseByLetter(const wxWindow& in, int key) {
  for (wxWindow* child : in.GetChildren()) {
    if (!child->IsShown() || !child->IsEnabled() || child->IsTopLevel()) continue;
    if ((HasLetter(*child, key) && Use(*child)) || UseByLetter(*child, key)) return true;
  }
  return false;
}

// The system looks for the letter in the innermost panel with the focus only: not in the other
// groups and tabs of a dialog, nor on a page while the side bar has the focus. And where that panel
// is none of its own dialogs, the letter of a label does nothing.
void OnKey(wxKeyEvent& event) {
  auto* focus = wxDynamicCast(event.GetEventObject(), wxWindow);
  if (event.GetModifiers() != wxMOD_ALT || focus == nullptr ||
      !UseByLetter(*wxGetTopLevelParent(focus), event.GetKeyCode())) {
    event.Skip();
  }
}

}  // namespace

void ServeAccessKeys() { wxTheApp->Bind(wxEVT_CHAR_HOOK, OnKey); }

}  // namespace ui
