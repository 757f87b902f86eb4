#include "tests/ui/dialog_fixture.h"

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include <stdexcept>
#include <utility>

#include "platform/native_path.h"
#include "ui/controls/toolkit_text.h"

namespace test {

using ui::Typed;

namespace {

// The system's own chooser takes a proposed path over only after having looked at its folder.
void Choose(wxFileDialog& dialog, const wxString& path) {
  constexpr int kTries = 500;
  dialog.SetPath(path);
  for (int i = 0; i < kTries && dialog.GetPath() != path; ++i) {
    wxMilliSleep(10);
    wxYield();
  }
  EXPECT_EQ(dialog.GetPath(), path);
}

}  // namespace

int Boxes::Enter(wxDialog* dialog) {
  const Answer answer = plan_.empty() ? Answer{wxID_CANCEL, ""} : plan_.front();
  if (!Record(dialog, answer.input)) return wxID_NONE;
  if (!plan_.empty()) plan_.pop_front();
  return answer.button;
}

bool Boxes::Record(wxDialog* dialog, const std::string& input) {
  Box box;
  box.title = Typed(dialog->GetTitle());
  if (auto* message = dynamic_cast<wxMessageDialogBase*>(dialog)) {
    box.kind = "message";
    box.text = Typed(message->GetMessage());
    box.style = message->GetMessageDialogStyle();
  } else if (auto* text = dynamic_cast<wxTextEntryDialog*>(dialog)) {
    box.kind = "text";
    box.proposed = Typed(text->GetValue());
    // The prompt is a line of text in the box; the first one is.
    for (wxWindow* child : text->GetChildren()) {
      if (box.text.empty()) box.text = Typed(child->GetLabel());
    }
    text->SetValue(ui::Shown(input));
  } else if (auto* folder = dynamic_cast<wxDirDialog*>(dialog)) {
    box.kind = "folder";
    box.title = Typed(folder->GetMessage());
    box.proposed = Typed(folder->GetPath());
    // Not the system's own chooser, which would only propose it.
    folder->wxDirDialogBase::SetPath(ui::Shown(input));
  } else if (auto* file = dynamic_cast<wxFileDialog*>(dialog)) {
    box.kind = "file";
    box.title = Typed(file->GetMessage());
    box.text = Typed(file->GetWildcard());
    box.proposed = Typed(file->GetFilename());
    box.style = file->GetWindowStyle();
    Choose(*file, ui::Shown(input));
  } else {
    return false;
  }
  shown_.push_back(box);
  return true;
}

Box Boxes::TakeOnly() {
  const std::vector<Box> boxes = Take();
  EXPECT_EQ(boxes.size(), 1U);
  return boxes.empty() ? Box() : boxes.front();
}

std::vector<Box> Boxes::Take() { return std::exchange(shown_, {}); }

DialogFixture::DialogFixture() {
  // Where the user's settings and, on Linux, the registry are kept.
  wxSetEnv("XDG_CONFIG_HOME", ui::Shown(platform::PathTextForUser(userState_.Text())));
}

int DialogFixture::Run(wxDialog& form, const std::function<void()>& script) {
  form.CallAfter([&] {
    script();
    if (form.IsModal()) form.EndModal(kStayedOpen);
  });
  return form.ShowModal();
}

wxWindow& DialogFixture::Find(wxWindow& form, const std::string& name) {
  wxWindow* window = wxWindow::FindWindowByName(ui::Shown(name), &form);
  if (window == nullptr) throw std::runtime_error("no window is named " + name);
  return *window;
}

void DialogFixture::Press(wxWindow& form, const std::string& name) {
  wxWindow& button = Find(form, name);
  EXPECT_TRUE(button.IsEnabled()) << name;
  wxCommandEvent event(wxEVT_BUTTON, button.GetId());
  event.SetEventObject(&button);
  button.ProcessWindowEvent(event);
}

void DialogFixture::PressEnterIn(wxWindow& form, const std::string& name) {
  wxWindow& field = Find(form, name);
  EXPECT_TRUE(field.HasFlag(wxTE_PROCESS_ENTER)) << "the key would go to the default button";
  wxCommandEvent event(wxEVT_TEXT_ENTER, field.GetId());
  event.SetEventObject(&field);
  field.ProcessWindowEvent(event);
}

void DialogFixture::Type(wxWindow& form, const std::string& name, const std::string& text) {
  dynamic_cast<wxTextCtrl&>(Find(form, name)).SetValue(ui::Shown(text));
}

std::string DialogFixture::TextIn(wxWindow& form, const std::string& name) {
  return Typed(dynamic_cast<wxTextCtrl&>(Find(form, name)).GetValue());
}

void DialogFixture::Set(wxWindow& form, const std::string& name, bool on) {
  wxWindow& control = Find(form, name);
  wxCommandEvent event(wxEVT_CHECKBOX, control.GetId());
  if (auto* box = dynamic_cast<wxCheckBox*>(&control)) {
    box->SetValue(on);
  } else {
    dynamic_cast<wxRadioButton&>(control).SetValue(on);
    event.SetEventType(wxEVT_RADIOBUTTON);
  }
  event.SetEventObject(&control);
  control.ProcessWindowEvent(event);
}

bool DialogFixture::IsSet(wxWindow& form, const std::string& name) {
  wxWindow& control = Find(form, name);
  if (auto* box = dynamic_cast<wxCheckBox*>(&control)) return box->GetValue();
  return dynamic_cast<wxRadioButton&>(control).GetValue();
}

std::string DialogFixture::UserPath(std::string_view name) const {
  return platform::PathTextForUser(Home().Text(name));
}

std::string DialogFixture::FocusedName() {
  const wxWindow* focused = wxWindow::FindFocus();
  return focused == nullptr ? "" : Typed(focused->GetName());
}

}  // namespace test
