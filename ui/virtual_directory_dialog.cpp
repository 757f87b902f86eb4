#include "ui/virtual_directory_dialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include "core/paths.h"
#include "ui/layout.h"
#include "ui/message_box.h"
#include "ui/questions.h"
#include "ui/toolkit_text.h"
#include "web/virtual_directory.h"

namespace ui {

frmEditDir::frmEditDir(wxWindow* parent, const core::Program& program)
    : wxDialog(parent, wxID_ANY, Shown("添加虚拟目录"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program) {
  SetName("frmEditDir");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  cmdBrowser->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBrowse(); });
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  Load();
  txtDir->SetFocus();
  CentreOnParent();
}

wxSizer* frmEditDir::MakeContent() {
  FieldRows rows(this);
  txtDir = rows.AddWithButton("txtDir", "目录(&D)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);

  Group programs(this, "应用程序许可");
  programs_ = OptionPair(programs.Parent(), {"OptNoApp", "不允许执行应用程序(&N)"},
                         {"OptAppDone", "允许执行应用程序(&X)"});
  OptNoApp = programs_.first;
  OptAppDone = programs_.second;
  programs.Content().Add(OptNoApp);
  programs.Content().Add(OptAppDone);

  Group rights(this, "访问权限");
  chkRead = MakeCheckBox(rights.Parent(), "chkRead", "读取(&R)");
  chkWrite = MakeCheckBox(rights.Parent(), "chkWrite", "写入(&W)");
  chkContralAll = MakeCheckBox(rights.Parent(), "chkContralAll", "完全控制(&A)");
  rights.Content().Add(MakeRow(this, {chkRead, chkWrite, chkContralAll}));

  Column column(this, kEdge);
  column.Add(rows.Sizer());
  column.Add(programs.Sizer());
  column.Add(rights.Sizer());
  return column.Sizer();
}

void frmEditDir::Load() {
  const ModWeb::VirtualDirectory directory = ModWeb::ReadVirtualDirectory(program_);
  txtDir->ChangeValue(Shown(directory.path));
  programs_.Set(directory.noPrograms, directory.programs);
  chkRead->SetValue(directory.read);
  chkWrite->SetValue(directory.write);
  chkContralAll->SetValue(directory.controlAll);
}

void frmEditDir::OnBrowse() {
  const auto folder = ChooseFolder(this, "选择虚拟目录");
  if (folder) txtDir->ChangeValue(Shown(*folder));
}

void frmEditDir::OnConfirm() {
  const std::string path = Typed(txtDir->GetValue());
  if (core::TrimBlanks(path).empty()) {
    Warn(this, "目录不能为空！");
    txtDir->SetFocus();
    return;
  }
  ModWeb::SaveVirtualDirectory(program_, {.path = path,
                                          .noPrograms = OptNoApp->GetValue(),
                                          .programs = OptAppDone->GetValue(),
                                          .read = chkRead->GetValue(),
                                          .write = chkWrite->GetValue(),
                                          .controlAll = chkContralAll->GetValue()});
  EndModal(wxID_OK);
}

}  // namespace ui
