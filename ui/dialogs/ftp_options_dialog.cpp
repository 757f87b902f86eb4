#include "ui/dialogs/ftp_options_dialog.h"

#include <wx/button.h>
#include <wx/textctrl.h>

#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {
namespace {

using ModFtp::FtpOptionsEntry;
using ModFtp::FtpOptionsFault;

constexpr const char* kTitle = "Ftp服务器选项";

}  // namespace

frmFtpOptions::frmFtpOptions(wxWindow* parent, const settings::Program& program,
                             ModFtp::FtpServer& server)
    : wxDialog(parent, wxID_ANY, Shown(kTitle), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      program_(program) {
  SetName("frmFtpOptions");
  wxSizer* content = MakeContent();
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  LetChooseFolder(cmdBrowser, txtFtpDir, "请选择FTP的站点位置");
  LetChooseFolder(cmdBrower2, txtFtpUploadDir, "请选择FTP站点文件上传的位置");
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, content, buttons);
  Load(ModFtp::EntryOf(server.Options()));
  txtFtpAddress->SetFocus();
  CentreOnParent();
}

wxSizer* frmFtpOptions::MakeContent() {
  Group site(this, "站点");
  FieldRows address(site.Parent());
  txtFtpAddress = address.Add("txtFtpAddress", "本地域名(&D)：");
  txtFtpIP = address.Add("txtFtpIP", "IP地址(&I)：");
  txtFtpPort = address.Add("txtFtpPort", "FTP端口(&P)：");
  site.Content().Add(address.Sizer());

  Group folders(this, "目录");
  FieldRows paths(folders.Parent());
  txtFtpDir =
      paths.AddWithButton("txtFtpDir", "主目录(&M)：", "cmdBrowser", "浏览(&B)...", cmdBrowser);
  txtFtpUploadDir = paths.AddWithButton("txtFtpUploadDir", "上传目录(&U)：", "cmdBrower2",
                                        "浏览(&L)...", cmdBrower2);
  folders.Content().Add(paths.Sizer());

  rights = RightsGroup(this);

  Column column(this, kEdge);
  column.Add(site.Sizer());
  column.Add(folders.Sizer());
  column.Add(rights.Sizer());
  return column.Sizer();
}

void frmFtpOptions::Load(const FtpOptionsEntry& entry) {
  txtFtpAddress->ChangeValue(Shown(entry.domain));
  txtFtpIP->ChangeValue(Shown(entry.localIP));
  txtFtpPort->ChangeValue(Shown(entry.port));
  txtFtpDir->ChangeValue(Shown(entry.root));
  txtFtpUploadDir->ChangeValue(Shown(entry.uploadDir));
  rights.Set(entry.rights);
}

FtpOptionsEntry frmFtpOptions::Entry() const {
  return {.localIP = Typed(txtFtpIP->GetValue()),
          .port = Typed(txtFtpPort->GetValue()),
          .domain = Typed(txtFtpAddress->GetValue()),
          .root = Typed(txtFtpDir->GetValue()),
          .uploadDir = Typed(txtFtpUploadDir->GetValue()),
          .rights = rights.Rights()};
}

void frmFtpOptions::OnConfirm() {
  const FtpOptionsEntry entry = Entry();
  if (const auto fault = ModFtp::FindFault(entry)) return Refuse(*fault);
  settings::Change change(program_);
  ModFtp::WriteSettings(change, entry);
  if (IsSaved(this, program_, change.Save(), kTitle)) EndModal(wxID_OK);
}

void frmFtpOptions::Refuse(FtpOptionsFault fault) {
  switch (fault) {
    case FtpOptionsFault::kNoDomain:
      Warn(this, "本地域名不能为空！", kTitle);
      return txtFtpAddress->SetFocus();
    case FtpOptionsFault::kNoRoot:
      Warn(this, "主目录不能为空！", kTitle);
      return txtFtpDir->SetFocus();
    case FtpOptionsFault::kNoUploadDir:
      Warn(this, "上传目录不能为空！", kTitle);
      return txtFtpUploadDir->SetFocus();
  }
}

}  // namespace ui
