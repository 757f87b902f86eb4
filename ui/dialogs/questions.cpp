#include "ui/dialogs/questions.h"

#include <wx/button.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/system_folders.h"
#include "text/strings.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

// What the toolkit's dialogs lack in comparison with the program's: buttons in its language, a
// field that is high enough.
void Adapt(wxTextEntryDialog& dialog) {
  auto* ok = wxDynamicCast(dialog.FindWindow(wxID_OK), wxButton);
  ok->SetLabel(Shown("确定"));
  ShowAsMain(*ok);
  dialog.FindWindow(wxID_CANCEL)->SetLabel(Shown("取消"));
  for (wxWindow* child : dialog.GetChildren()) {
    if (auto* field = wxDynamicCast(child, wxTextCtrl)) FitToLetters(*field);
  }
  dialog.Fit();
}

}  // namespace

std::optional<std::string> ChooseFolder(wxWindow* parent, const char* title,
                                        const std::string& current) {
  const bool exists = files::FolderExists(platform::PathTextFromUser(current));
  const std::string start =
      exists ? current
             : platform::PathTextForUser(platform::PathText(platform::FirstFolderToChooseFrom()));
  wxDirDialog dialog(parent, Shown(title), Shown(start));
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  const std::string path = Typed(dialog.GetPath());
  return std::string(text::TrimBlanks(std::string_view(path).substr(0, path.find('\0'))));
}

void LetChooseFolder(wxButton* button, wxTextCtrl* field, const char* title) {
  button->Bind(wxEVT_BUTTON, [button, field, title](wxCommandEvent&) {
    const std::string current = Typed(field->GetValue());
    const auto folder = ChooseFolder(wxGetTopLevelParent(button), title, current);
    if (folder) field->ChangeValue(Shown(*folder));
  });
}

std::optional<std::string> AskFileToSave(wxWindow* parent, const char* title, const char* filter,
                                         const char* proposed) {
  wxFileDialog dialog(parent, Shown(title), "", Shown(proposed), Shown(filter),
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return platform::PathTextFromUser(Typed(dialog.GetPath()));
}

std::vector<std::string> AskFilesToOpen(wxWindow* parent, const char* title) {
  wxFileDialog dialog(parent, Shown(title), "", "", Shown(kAllFiles),
                      wxFD_OPEN | wxFD_MULTIPLE | wxFD_FILE_MUST_EXIST);
  if (dialog.ShowModal() != wxID_OK) return {};
  wxArrayString names;
  dialog.GetPaths(names);
  std::vector<std::string> files;
  for (const wxString& name : names) files.push_back(platform::PathTextFromUser(Typed(name)));
  return files;
}

std::optional<std::string> AskText(wxWindow* parent, const char* prompt, const char* title,
                                   const std::string& proposed) {
  wxTextEntryDialog dialog(parent, Shown(prompt), Shown(title), Shown(proposed));
  Adapt(dialog);
  if (dialog.ShowModal() != wxID_OK || dialog.GetValue().empty()) return std::nullopt;
  return Typed(dialog.GetValue());
}

}  // namespace ui
