#include "ui/dialogs/virtual_directory_dialog.h"

#include <wx/button.h>
#include <wx/textctrl.h>

#include "text/strings.h"
#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"
#include "web/virtual_directory.h"

namespace ui {

frmEditDir::frmEditDir(wxWindow* parent, const settings::Program& program)
    : wxDialog(parent, wxID_ANY, Shown("添加虚拟目录"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program) {
  SetName("frmEditDir");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  LetChooseFolder(cmdBrowser, txtDir, "选择虚拟目录");
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  Load();
  txtDir->SetFocus();
  CentreOnParent();
}

wxSizer* frmEditDir::MakeContent() {
  FieldRows rows(this);
  txtDir = rows.AddWithButton("txtDir", "目录(&D)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);

  programs = ProgramsGroup(this, "OptNoApp");
  rights = RightsGroup(this);
  Column column(this, kEdge);
  column.Add(rows.Sizer());
  column.Add(programs.Sizer());
  column.Add(rights.Sizer());
  return column.Sizer();
}

void frmEditDir::Load() {
  const ModWeb::VirtualDirectory directory = ModWeb::ReadVirtualDirectory(program_);
  txtDir->ChangeValue(Shown(directory.path));
  programs.Set(directory.noPrograms, directory.programs);
  rights.Set(directory.rights);
}

void frmEditDir::OnConfirm() {
  const std::string path = Typed(txtDir->GetValue());
  if (text::TrimBlanks(path).empty()) {
    Warn(this, "目录不能为空！");
    txtDir->SetFocus();
    return;
  }
  const std::error_code error =
      ModWeb::SaveVirtualDirectory(program_, {.path = path,
                                              .noPrograms = programs.AreForbidden(),
                                              .programs = programs.AreAllowed(),
                                              .rights = rights.Rights()});
  if (IsSaved(this, program_, error)) EndModal(wxID_OK);
}

}  // namespace ui
