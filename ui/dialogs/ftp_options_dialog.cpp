#include "ui/dialogs/ftp_options_dialog.h"

#include <wx/button.h>
#include <wx/textctrl.h>

#include "core/port_remarks.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {
namespace {

constexpr const char* kTitle = "Ftp服务器选项";

}  // namespace

frmFtpOptions::frmFtpOptions(wxWindow* parent, const settings::Program& program,
                             ModFtp::FtpServer& server)
    : wxDialog(parent, wxID_ANY, Shown(kTitle), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program),
      options_(server.Options()),
      form_(*this, options_.Describe(), kTitle) {
  SetName("frmFtpOptions");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  LetChooseFolder(cmdBrowser, txtFtpDir, "请选择FTP的站点位置");
  LetChooseFolder(cmdBrower2, txtFtpUploadDir, "请选择FTP站点文件上传的位置");
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  form_.Show(options_.EntryToShow(program));
  txtFtpAddress->SetFocus();
  CentreOnParent();
}

wxSizer* frmFtpOptions::MakeContent() {
  Group site(this, "站点");
  FieldRows address(site.Parent());
  txtFtpAddress = address.Add("txtFtpAddress", "本地域名(&D)：");
  txtFtpIP = address.Add("txtFtpIP", "IP地址(&I)：");
  ExplainAddress(*txtFtpIP);
  txtFtpPort = address.Add("txtFtpPort", "FTP端口(&P)：");
  address.AddNote("lblFtpPortNote", core::kPortRange, [](const std::string& typed) {
    return core::PortComplaint(typed, std::nullopt);
  });
  site.Content().Add(address.Sizer());

  Group folders(this, "目录");
  FieldRows paths(folders.Parent());
  txtFtpDir =
      paths.AddWithButton("txtFtpDir", "主目录(&M)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);
  txtFtpUploadDir = paths.AddWithButton("txtFtpUploadDir", "上传目录(&U)：", "cmdBrower2",
                                        "浏览(&L)...", cmdBrower2);
  folders.Content().Add(paths.Sizer());

  rights = RightsGroup(this, RightsGroup::Of::kFtp);

  Column column(this, kEdge);
  column.Add(site.Sizer());
  column.Add(folders.Sizer());
  column.Add(rights.Sizer());
  return column.Sizer();
}

void frmFtpOptions::OnConfirm() {
  const settings::Entry entry = form_.Entered();
  if (form_.IsRefused(entry)) return;
  settings::Change change(program_);
  settings::Write(change, form_.Table(), entry);
  if (IsSaved(this, program_, change.Save(), kTitle)) EndModal(wxID_OK);
}

}  // namespace ui
