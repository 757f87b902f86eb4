#include "ui/dialogs/options_dialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/textctrl.h>

#include "settings/autostart.h"
#include "settings/manager_password.h"
#include "settings/user_state.h"
#include "text/strings.h"
#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/password_field.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/save_report.h"
#include "ui/dialogs/start_with_system.h"

namespace ui {
namespace {

constexpr int kPasswordWidth = 160;

}  // namespace

frmOptions::frmOptions(wxWindow* parent, const settings::Program& program)
    : wxDialog(parent, wxID_ANY, Shown("系统选项")),
      program_(program),
      form_(*this, options_.Describe()) {
  SetName("frmOptions");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  chkManagerPwd->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) {
    EnablePassword();
    if (txtPwd->IsEnabled()) txtPwd->SetFocus();
  });
  txtPwd->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { KeepPasswordFitting(); });
  chkShowPwd->Bind(wxEVT_CHECKBOX,
                   [this](wxCommandEvent&) { ShowPassword(*txtPwd, chkShowPwd->GetValue()); });
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  Load();
  CentreOnParent();
}

wxSizer* frmOptions::MakeContent() {
  Group start(this, "启动");
  chkSysAutoStart = MakeCheckBox(start.Parent(), "chkSysAutoStart", "随系统启动本程序(&S)");
  chkShowInBar = MakeCheckBox(start.Parent(), "chkShowInBar", "启动后只显示托盘图标(&T)");
  chkAutoStartService =
      MakeCheckBox(start.Parent(), "chkAutoStartService", "启动后自动开始各项服务(&A)");
  for (wxCheckBox* box : {chkSysAutoStart, chkShowInBar, chkAutoStartService}) {
    start.Content().Add(box);
  }

  Group notices(this, "通知");
  chkNotices =
      MakeCheckBox(notices.Parent(), "chkNotices", "有人上传了文件或有邮件到达时通知我(&N)");
  notices.Content().Add(chkNotices);

  Group manager(this, "管理密码");
  chkManagerPwd = MakeCheckBox(manager.Parent(), "chkManagerPwd", "打开管理窗口时要求密码(&P)：");
  txtPwd = MakeField(manager.Parent(), "txtPwd", kPasswordWidth, wxTE_PASSWORD);
  chkShowPwd = MakeCheckBox(manager.Parent(), "chkShowPwd", "显示密码(&W)");
  manager.Content().Add(MakeRow(this, {chkManagerPwd, txtPwd, chkShowPwd}));

  Column column(this, kEdge);
  column.Add(start.Sizer());
  column.Add(notices.Sizer());
  column.Add(manager.Sizer());
  return column.Sizer();
}

void frmOptions::Load() {
  options_.Load(program_);
  form_.Show(settings::EntryOf(form_.Table()));
  chkSysAutoStart->SetValue(settings::StartsWithSystem(program_));
  chkNotices->SetValue(settings::WantsNotices());
  const std::string password = settings::ManagerPassword(program_);
  chkManagerPwd->SetValue(!password.empty());
  txtPwd->ChangeValue(Shown(password));
  EnablePassword();
}

void frmOptions::EnablePassword() {
  for (wxWindow* control : {static_cast<wxWindow*>(txtPwd), static_cast<wxWindow*>(chkShowPwd)}) {
    control->Enable(chkManagerPwd->GetValue());
  }
}

// The user sees where it ends rather than being locked out by a password that was cut.
void frmOptions::KeepPasswordFitting() {
  const std::string typed = Typed(txtPwd->GetValue());
  const std::string fitting = settings::FittingManagerPassword(typed);
  if (fitting == typed) return;
  txtPwd->ChangeValue(Shown(fitting));
  txtPwd->SetInsertionPointEnd();
  wxBell();
}

void frmOptions::OnConfirm() {
  const std::string password = Typed(txtPwd->GetValue());
  const bool wanted = chkManagerPwd->GetValue();
  if (wanted && text::TrimBlanks(password).empty()) {
    Warn(this, "请输入管理密码！");
    txtPwd->SetFocus();
    return;
  }
  settings::Change change(program_);
  settings::Write(change, form_.Table(), form_.Entered());
  if (!IsSaved(this, program_, change.Fault())) return;
  settings::SetManagerPassword(program_, wanted ? password : "");
  if (!IsSaved(this, program_, change.Save())) return;
  settings::SetWantsNotices(chkNotices->GetValue());
  SetToStartWithSystem(this, program_, chkSysAutoStart->GetValue());
  EndModal(wxID_OK);
}

}  // namespace ui
