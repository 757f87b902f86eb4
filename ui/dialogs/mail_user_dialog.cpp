#include "ui/dialogs/mail_user_dialog.h"

#include <wx/button.h>
#include <wx/textctrl.h>

#include "core/protection_options.h"
#include "mail/mail_accounts.h"
#include "platform/native_path.h"
#include "platform/system_message.h"
#include "text/strings.h"
#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

// Of the boxes, also when a user is edited and the dialog is titled otherwise.
constexpr const char* kTitle = "添加用户";

// The user sees the name as it will be before it is saved.
std::optional<std::string> ChangeOfName(const std::string& typed) {
  const std::string name = ModMail::CleanName(typed);
  if (name == text::TrimBlanks(typed)) return std::nullopt;
  return name.empty() ? "这不能作为用户名。" : "将保存为“" + name + "”。";
}

}  // namespace

frmEmailUsers::frmEmailUsers(wxWindow* parent, const settings::Program& program,
                             ModMail::MailServer& server)
    : wxDialog(parent, wxID_ANY, Shown(kTitle), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program),
      server_(server) {
  SetName("frmEmailUsers");
  FieldRows rows(this);
  txtUser = rows.Add("txtUser", "用户名(&U)：", wxTE_PROCESS_ENTER);
  rows.AddNote("lblUserNote", R"(不能含有 \ / : * ? " < > |)", ChangeOfName);
  txtPass = rows.Add("txtPass", "密码(&P)：", wxTE_PROCESS_ENTER);
  const DialogButtons buttons = MakeDialogButtons(*this, "OKButton", "CancelButton");
  OKButton = buttons.ok;
  CancelButton = buttons.cancel;
  txtUser->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { OnEnterInUser(); });
  txtPass->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { OnEnterInPass(); });
  OKButton->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, rows.Sizer(), buttons);
  server.EnsureMailRoot();
  txtUser->SetFocus();
  CentreOnParent();
}

void frmEmailUsers::OnEnterInUser() {
  if (!txtUser->IsEmpty()) txtPass->SetFocus();
}

void frmEmailUsers::OnEnterInPass() {
  if (!txtPass->IsEmpty()) OnConfirm();
}

void frmEmailUsers::OnConfirm() {
  const ModMail::MailUser user{ModMail::CleanName(Typed(txtUser->GetValue())),
                               ModMail::CleanPassword(Typed(txtPass->GetValue()))};
  if (user.name.empty()) return Refuse("请输入用户名！", txtUser);
  if (user.password.empty()) return Refuse("请输入密码！", txtPass);
  const std::string& root = server_.Options().mailRoot;
  const ModMail::PasswordForm form = core::LoadProtection(program_).signIn
                                         ? ModMail::PasswordForm::kHashed
                                         : ModMail::PasswordForm::kPlain;
  if (ModMail::MailUserExists(root, user.name)) {
    if (!Confirm(this, "该用户账号已存在，是否要更改密码？", kTitle)) return;
    const std::error_code error = ModMail::ChangeMailPassword(root, user, form);
    if (error) return TellUnsaved(user.name, error);
    ShowMessage(this, "您已成功更改密码！", kTitle, wxOK | wxICON_INFORMATION);
  }
  const std::error_code error = ModMail::SaveMailUser(root, user, form);
  if (error) return TellUnsaved(user.name, error);
  EndModal(wxID_OK);
}

void frmEmailUsers::TellUnsaved(const std::string& name, const std::error_code& error) {
  const std::string folder = ModMail::MailUserFolder(server_.Options().mailRoot);
  program_.errors.LogError(folder + name +
                           ": cannot be written: " + platform::SystemMessage(error));
  Warn(this, "用户没有保存：他的文件夹无法读写。\n" + platform::PathTextForUser(folder + name),
       kTitle);
}

void frmEmailUsers::Refuse(const char* text, wxTextCtrl* field) {
  Warn(this, text, kTitle);
  field->SetFocus();
}

}  // namespace ui
