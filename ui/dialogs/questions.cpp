#include "ui/dialogs/questions.h"

#include <wx/button.h>
#include <wx/dirdlg.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>

#include "platform/native_path.h"
#include "platform/system_folders.h"
#include "text/strings.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

// The toolkit's own dialogs name their buttons in the language of the system.
void SetButtonText(wxDialog& dialog, int id, const char* text) {
  if (wxWindow* button = dialog.FindWindow(id)) button->SetLabel(Shown(text));
}

}  // namespace

std::optional<std::string> ChooseFolder(wxWindow* parent, const char* title) {
  const std::string start =
      platform::PathTextForUser(platform::PathText(platform::FirstFolderToChooseFrom()));
  wxDirDialog dialog(parent, Shown(title), Shown(start));
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  const std::string path = Typed(dialog.GetPath());
  return std::string(text::TrimBlanks(std::string_view(path).substr(0, path.find('\0'))));
}

void LetChooseFolder(wxButton* button, wxTextCtrl* field, const char* title) {
  button->Bind(wxEVT_BUTTON, [button, field, title](wxCommandEvent&) {
    const auto folder = ChooseFolder(wxGetTopLevelParent(button), title);
    if (folder) field->ChangeValue(Shown(*folder));
  });
}

std::optional<std::string> AskText(wxWindow* parent, const char* prompt, const char* title,
                                   const std::string& proposed) {
  wxTextEntryDialog dialog(parent, Shown(prompt), Shown(title), Shown(proposed));
  SetButtonText(dialog, wxID_OK, "确定");
  SetButtonText(dialog, wxID_CANCEL, "取消");
  if (dialog.ShowModal() != wxID_OK || dialog.GetValue().empty()) return std::nullopt;
  return Typed(dialog.GetValue());
}

}  // namespace ui
