#include "ui/controls/accessible.h"

#include <wx/bookctrl.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/listctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

template <class... Kinds>
bool IsOneOf(wxWindow* window) {
  return ((dynamic_cast<Kinds*>(window) != nullptr) || ...);
}

// A label as text for a screen reader: without the mnemonic and the trailing colon.
std::string Spoken(const wxString& label) {
  std::string text = Typed(wxControl::RemoveMnemonics(label));
  // East Asian labels have the mnemonic in parentheses, which the toolkit keeps.
  const std::size_t bracket = text.rfind('(');
  if (bracket != std::string::npos && text.find(')', bracket) == bracket + 2) {
    text.erase(bracket, 3);
  }
  for (const std::string& colon : {std::string("："), std::string(":")}) {
    if (text.ends_with(colon)) text.erase(text.size() - colon.size());
  }
  return text;
}

std::string HeadingOf(wxWindow& page) {
  const auto* book = dynamic_cast<wxBookCtrlBase*>(page.GetParent());
  const int index = book == nullptr ? wxNOT_FOUND : book->FindPage(&page);
  return index == wxNOT_FOUND ? "" : Typed(book->GetPageText(static_cast<std::size_t>(index)));
}

void DescribeFieldsUnder(wxWindow& parent, const std::string& heading) {
  std::string label = heading;
  for (wxWindow* child : parent.GetChildren()) {
    if (IsOneOf<wxStaticText, wxCheckBox>(child)) {
      label = Spoken(child->GetLabel());
    } else if (IsOneOf<wxListCtrl>(child)) {
      Describe(*child, label, AccessibleRole::kTable);
    } else if (IsOneOf<wxTextCtrl, wxChoice, wxListBox>(child)) {
      Describe(*child, label);
    } else {
      if (IsOneOf<wxBookCtrlBase>(child)) Describe(*child, heading);
      const std::string own = HeadingOf(*child);
      DescribeFieldsUnder(*child, own.empty() ? heading : own);
    }
  }
}

}  // namespace

void Describe(wxWindow& control, const std::string& name, AccessibleRole role,
              const std::string& description) {
  platform::DescribeControl(control.GetHandle(), {name, role, description});
  if (!IsOneOf<wxListCtrl>(&control)) return;
  // Where the system has no list control, the toolkit's own list is a frame around the widget that
  // has the focus.
  for (wxWindow* part : control.GetChildren()) {
    if (part->AcceptsFocus()) {
      platform::DescribeControl(part->GetHandle(), {name, role, description});
    }
  }
}

void DescribeFields(wxWindow& window) { DescribeFieldsUnder(window, Typed(window.GetLabel())); }

}  // namespace ui
