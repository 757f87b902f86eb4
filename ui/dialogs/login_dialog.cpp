#include "ui/dialogs/login_dialog.h"

#include <wx/button.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "settings/manager_password.h"
#include "text/strings.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPatience = 60000;  // milliseconds

}  // namespace

frmPassWord::frmPassWord(wxWindow* parent, const settings::Program& program)
    : wxDialog(parent, wxID_ANY, Shown("管理员登录")), Timer1(this), program_(program) {
  SetName("frmPassWord");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  txtPwd->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { OnConfirm(); });
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { EndModal(wxID_CANCEL); });
  Fill(*this, content, buttons);
}

wxSizer* frmPassWord::MakeContent() {
  FieldRows rows(this);
  txtPwd = rows.Add("txtPwd", "管理密码(&P)：", wxTE_PASSWORD | wxTE_PROCESS_ENTER);
  lblMsg = Named(new wxStaticText(this, wxID_ANY, Shown("密码不正确，请重新输入。")), "lblMsg");
  lblMsg->SetForegroundColour(FailedText());
  lblMsg->Hide();
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(rows.Sizer(), wxSizerFlags().Expand());
  column->Add(lblMsg, wxSizerFlags().ReserveSpaceEvenIfHidden().Border(wxTOP, FromDIP(kGap)));
  return column;
}

int frmPassWord::ShowModal() {
  CentreOnScreen();
  txtPwd->SetFocus();
  Timer1.StartOnce(kPatience);
  const int result = wxDialog::ShowModal();
  Timer1.Stop();
  return result;
}

void frmPassWord::OnConfirm() {
  const std::string typed = Typed(txtPwd->GetValue());
  loginOk_ = settings::CheckUser(program_, settings::kManagerName, text::TrimBlanks(typed));
  if (loginOk_) return EndModal(wxID_OK);
  lblMsg->Show();
  txtPwd->SetFocus();
  txtPwd->SelectAll();
}

}  // namespace ui
