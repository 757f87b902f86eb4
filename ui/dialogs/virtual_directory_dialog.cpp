#include "ui/dialogs/virtual_directory_dialog.h"

#include <wx/button.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {

frmEditDir::frmEditDir(wxWindow* parent, const settings::Program& program)
    : wxDialog(parent, wxID_ANY, Shown("添加虚拟目录"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program),
      form_(*this, directory_.Describe()) {
  SetName("frmEditDir");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  LetChooseFolder(cmdBrowser, txtDir, "选择虚拟目录");
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  directory_.Load(program);
  form_.Show(settings::EntryOf(form_.Table()));
  txtDir->SetFocus();
  CentreOnParent();
}

wxSizer* frmEditDir::MakeContent() {
  FieldRows rows(this);
  txtDir = rows.AddWithButton("txtDir", "目录(&D)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);

  programs = ProgramsGroup(this, "OptNoApp");
  rights = RightsGroup(this, RightsGroup::Of::kVirtualDirectory);
  for (wxWindow* control :
       {static_cast<wxWindow*>(txtDir), static_cast<wxWindow*>(cmdBrowser),
        static_cast<wxWindow*>(programs.forbidden), static_cast<wxWindow*>(programs.OptAppDone)}) {
    control->SetToolTip(Shown(kVirtualDirectoryTip));
  }
  Column column(this, kEdge);
  column.Add(rows.Sizer());
  column.Add(programs.Sizer());
  column.Add(rights.Sizer());
  return column.Sizer();
}

void frmEditDir::OnConfirm() {
  const settings::Entry entry = form_.Entered();
  if (form_.IsRefused(entry)) return;
  settings::Change change(program_);
  settings::Write(change, form_.Table(), entry);
  if (IsSaved(this, program_, change.Save())) EndModal(wxID_OK);
}

}  // namespace ui
