#include "ui/dialogs/mail_options_dialog.h"

#include <wx/button.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include "core/port_remarks.h"
#include "text/strings.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/permission_groups.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {
namespace {

constexpr const char* kTitle = "E-Mail服务器选项";

}  // namespace

frmMailOptions::frmMailOptions(wxWindow* parent, const settings::Program& program,
                               ModMail::MailServer& server)
    : wxDialog(parent, wxID_ANY, Shown(kTitle), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program),
      server_(server),
      form_(*this, options_.Describe(), kTitle),
      pages_(MakeNotebook(this)) {
  SetName("frmMailOptions");
  pages_->AddPage(MakeServerPage(), Shown("服务器"));
  auto* logPage = new wxPanel(pages_);
  auto* log = new LogPanel(logPage, program.File("Mail.log"));
  lstLog = log->lstLog;
  cmdClearLog = log->cmdClearLog;
  cmdExportLog = log->cmdExportLog;
  pages_->AddPage(WithMargin(logPage, log), Shown("邮件日志"));

  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, pages_, buttons);

  server.LoadOptions();
  options_ = server.Options();
  form_.Show(settings::EntryOf(form_.Table()));
  txtMailAddress->SetFocus();
  CentreOnScreen();
}

wxWindow* frmMailOptions::MakeServerPage() {
  auto* page = new wxPanel(pages_);
  FieldRows rows(page);
  txtMailAddress = rows.Add("txtMailAddress", "本地域名(&D)：");
  txtMailIP = rows.Add("txtMailIP", "IP地址(&I)：");
  ExplainAddress(*txtMailIP);
  txtSMTPPort = rows.Add("txtSMTPPort", "SMTP端口(&S)：");
  rows.AddNote("lblSMTPPortNote", core::kPortRange, [this](const std::string& typed) {
    return core::PortComplaint(typed, options_.smtpPort);
  });
  txtPop3Port = rows.Add("txtPop3Port", "POP3端口(&P)：");
  rows.AddNote("lblPop3PortNote", core::kPortRange, [this](const std::string& typed) {
    return core::PortComplaint(typed, options_.pop3Port);
  });
  txtMailRootDir =
      rows.AddWithButton("txtMailRootDir", "主目录(&R)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);
  LetChooseFolder(cmdBrowser, txtMailRootDir, "选择Email服务器内容的存放目录");
  return WithMargin(page, rows.Sizer());
}

void frmMailOptions::OnConfirm() {
  const settings::Entry entry = form_.Entered();
  if (form_.IsRefused(entry)) return;
  settings::Change change(program_);
  settings::Write(change, form_.Table(), entry);
  if (!IsSaved(this, program_, change.Save(), kTitle)) return;
  server_.SetMailRoot(text::TrimBlanks(entry.at(ModMail::kMailRootKey)));
  EndModal(wxID_OK);
}

}  // namespace ui
