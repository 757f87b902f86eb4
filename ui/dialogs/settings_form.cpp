#include "ui/dialogs/settings_form.h"

#include <wx/bookctrl.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include <utility>

#include "text/conversions.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using settings::Refusal;

void Put(wxWindow* control, const std::string& text) {
  const bool isSet = text::ToBoolean(text).value_or(false);
  if (auto* field = wxDynamicCast(control, wxTextCtrl)) {
    field->SetValue(Shown(text));  // notes below fields follow
  } else if (auto* box = wxDynamicCast(control, wxCheckBox)) {
    box->SetValue(isSet);
  } else if (auto* option = wxDynamicCast(control, wxRadioButton); option != nullptr && isSet) {
    option->SetValue(true);  // which turns the others of its group off
  }
}

std::string TextIn(wxWindow* control, settings::Form form) {
  if (const auto* field = wxDynamicCast(control, wxTextCtrl)) return Typed(field->GetValue());
  const auto* box = wxDynamicCast(control, wxCheckBox);
  const auto* option = wxDynamicCast(control, wxRadioButton);
  const bool isSet = box != nullptr ? box->GetValue() : option->GetValue();
  return form == settings::Form::kBoolean ? text::BooleanText(isSet) : text::CheckText(isSet);
}

long IconOf(Refusal::Icon icon) {
  return icon == Refusal::Icon::kWarning ? wxICON_EXCLAMATION : wxICON_INFORMATION;
}

}  // namespace

void ShowPageOf(const wxWindow& control) {
  for (wxWindow* page = control.GetParent(); page != nullptr; page = page->GetParent()) {
    auto* book = wxDynamicCast(page->GetParent(), wxBookCtrlBase);
    if (book != nullptr) book->SetSelection(static_cast<std::size_t>(book->FindPage(page)));
  }
}

SettingsForm::SettingsForm(wxWindow& dialog, settings::Table table, const char* title)
    : dialog_(dialog), table_(std::move(table)), title_(title) {}

void SettingsForm::Show(const settings::Entry& entry) const {
  for (const settings::Setting& setting : table_.settings) {
    Put(Find(setting.control), entry.at(setting.key));
  }
}

settings::Entry SettingsForm::Entered() const {
  settings::Entry entry;
  for (const settings::Setting& setting : table_.settings) {
    entry[setting.key] = TextIn(Find(setting.control), setting.form);
  }
  return entry;
}

bool SettingsForm::IsRefused(const settings::Entry& entry) const {
  const auto refused = settings::FindRefused(table_, entry);
  if (!refused) return false;
  ShowMessage(&dialog_, refused->refusal.text, title_, wxOK | IconOf(refused->refusal.icon));
  wxWindow* control = Find(refused->control);
  ShowPageOf(*control);
  control->SetFocus();
  return true;
}

wxWindow* SettingsForm::Find(const char* control) const {
  return dialog_.FindWindow(wxString(control));
}

}  // namespace ui
