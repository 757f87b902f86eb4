#include "ui/pages/upload_note.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <string>

#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

std::string TextOf(UploadNote::Uploads uploads, const core::ProtectionOptions& protection) {
  using Uploads = UploadNote::Uploads;
  const std::string who = protection.signIn ? "登录的人" : "任何人";
  if (uploads == Uploads::kNone && protection.confine)
    return who + "都可以下载；没有设置上传目录，所以谁也不能上传、改名和删除。";
  if (uploads == Uploads::kNone)
    return "没有设置上传目录：" + who +
           "都可以上传、改名和删除这台电脑上\n本程序能改动的所有文件。";
  const std::string onlyThere = who + "都可以下载；上传、改名和删除只限于上传目录";
  if (uploads == Uploads::kInRoot) return onlyThere + "。";
  return onlyThere + "，\n但它在主目录之外，访问者找不到它。请在选项中更改。";
}

std::string NoteOf(const core::ProtectionOptions& protection) {
  const std::string login =
      protection.signIn ? "登录要用邮件用户的用户名和密码；" : "任何用户名和密码都可以登录；";
  if (protection.confine) return login + "访问者到不了主目录之外。";
  return login + "用“..”可以离开这些文件夹，\n所以请只让您信任的人使用 FTP 服务。";
}

}  // namespace

UploadNote::UploadNote(wxWindow* parent, const std::function<void()>& makeUpload)
    : wxPanel(parent) {
  lblUploads_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblUploads");
  cmdMakeUpload_ = MakeActionButton(this, "cmdMakeUpload", "建立上传目录(&K)", makeUpload);
  lblFtpNote_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblFtpNote");
  lblFtpNote_->SetForegroundColour(QuietText());
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(lblUploads_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(cmdMakeUpload_, wxSizerFlags().CentreVertical());
  Column column(this, kTightGap);
  column.Add(row);
  column.Add(lblFtpNote_);
  SetSizer(column.Sizer());
  ShowUploads(Uploads::kNone, {});
}

void UploadNote::ShowUploads(Uploads uploads, const core::ProtectionOptions& protection) {
  const bool none = uploads == Uploads::kNone;
  lblUploads_->SetForegroundColour(none && !protection.confine ? FailedText() : QuietText());
  lblUploads_->SetLabel(Shown(TextOf(uploads, protection)));
  lblFtpNote_->SetLabel(Shown(NoteOf(protection)));
  cmdMakeUpload_->Show(none);
  GetParent()->Layout();
}

}  // namespace ui
