#include "ui/dialogs/web_options_dialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include "core/port_remarks.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {

frmWebOptions::frmWebOptions(wxWindow* parent, const settings::Program& program,
                             ModWeb::WebServer& server)
    : wxDialog(parent, wxID_ANY, Shown("Web服务器选项"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program),
      server_(server),
      form_(*this, options_.Describe()),
      pages_(MakeNotebook(this)) {
  SetName("frmWebOptions");
  pages_->AddPage(MakeSitePage(), Shown("站点"));
  pages_->AddPage(MakeDocumentPage(), Shown("默认文档"));
  pages_->AddPage(MakeRightsPage(), Shown("权限"));
  auto* logPage = new wxPanel(pages_);
  auto* log = new LogPanel(logPage, program.File("Web.log"));
  lstLog = log->lstLog;
  pages_->AddPage(WithMargin(logPage, log), Shown("访问日志"));

  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, pages_, buttons);

  server.LoadOptions();
  options_ = server.Options();
  form_.Show(options_.EntryToShow(program));
  answers->Show(options_.answers);
  documents_->Set({options_.DefaultPages.begin(), options_.DefaultPages.end()});
  txtWebRoot->SetFocus();
  CentreOnScreen();
}

wxWindow* frmWebOptions::MakeSitePage() {
  auto* page = new wxPanel(pages_);
  FieldRows rows(page);
  txtWebRoot =
      rows.AddWithButton("txtWebRoot", "主目录(&R)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);
  txtWebAddress = rows.Add("txtWebAddress", "本地域名(&D)：");
  txtWebIP = rows.Add("txtWebIP", "IP地址(&I)：");
  ExplainAddress(*txtWebIP);
  txtWebPort = rows.Add("txtWebPort", "TCP端口(&P)：");
  rows.AddNote("lblWebPortNote", core::kPortRange, [this](const std::string& typed) {
    return core::PortComplaint(typed, options_.WebPort);
  });
  answers = std::make_unique<AnswerFields>(page, rows);
  LetChooseFolder(cmdBrowser, txtWebRoot, "选择Web服务器的主目录");
  return WithMargin(page, rows.Sizer());
}

wxWindow* frmWebOptions::MakeDocumentPage() {
  auto* page = new wxPanel(pages_);
  chkDefaultFile = MakeCheckBox(page, "chkDefaultFile", "访问根目录时发送默认文档(&S)");
  documents_ = new DocumentList(page);
  lstDocument = documents_->lstDocument;
  Column column(page);
  column.Add(chkDefaultFile);
  column.Add(documents_, 1);
  return WithMargin(page, column.Sizer());
}

wxWindow* frmWebOptions::MakeRightsPage() {
  auto* page = new wxPanel(pages_);
  rights = RightsGroup(page, RightsGroup::Of::kWeb);
  programs = ProgramsGroup(page, "optAppNone");
  Column column(page, kEdge);
  column.Add(rights.Sizer());
  column.Add(programs.Sizer());
  return WithMargin(page, column.Sizer());
}

void frmWebOptions::OnConfirm() {
  const settings::Entry entry = form_.Entered();
  if (form_.IsRefused(entry)) return;
  const auto answered = answers->Entered(options_.answers);
  if (!answered) return;
  settings::Change change(program_);
  settings::Write(change, form_.Table(), entry);
  ModWeb::WriteAnswerOptions(change, program_, *answered);
  // New documents must not meet old settings.
  if (IsSaved(this, program_, change.Fault()) &&
      IsSaved(this, program_, ModWeb::SaveDefaultPages(program_, documents_->Names())) &&
      IsSaved(this, program_, change.Save())) {
    server_.SetDefaultPages(documents_->Names());
    EndModal(wxID_OK);
  }
}

}  // namespace ui
