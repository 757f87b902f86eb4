#include "ui/pages/upload_note.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

const char* TextOf(UploadNote::Uploads uploads) {
  switch (uploads) {
    case UploadNote::Uploads::kNone:
      return "没有设置上传目录：任何人都可以上传、改名和删除这台电脑上\n"
             "本程序能改动的所有文件。";
    case UploadNote::Uploads::kInRoot:
      return "任何人都可以下载；上传、改名和删除只限于上传目录。";
    case UploadNote::Uploads::kElsewhere:
      return "任何人都可以下载；上传、改名和删除只限于上传目录，\n"
             "但它在主目录之外，访问者找不到它。请在选项中更改。";
  }
  return "";
}

}  // namespace

UploadNote::UploadNote(wxWindow* parent, const std::function<void()>& makeUpload)
    : wxPanel(parent) {
  lblUploads_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblUploads");
  cmdMakeUpload_ = MakeActionButton(this, "cmdMakeUpload", "建立上传目录(&K)", makeUpload);
  auto* note =
      Named(new wxStaticText(this, wxID_ANY,
                             Shown("任何用户名和密码都可以登录；用“..”可以离开这些文件夹，\n"
                                   "所以请只让您信任的人使用 FTP 服务。")),
            "lblFtpNote");
  note->SetForegroundColour(QuietText());
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(lblUploads_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(cmdMakeUpload_, wxSizerFlags().CentreVertical());
  Column column(this, kTightGap);
  column.Add(row);
  column.Add(note);
  SetSizer(column.Sizer());
  ShowUploads(Uploads::kNone);
}

void UploadNote::ShowUploads(Uploads uploads) {
  const bool none = uploads == Uploads::kNone;
  lblUploads_->SetForegroundColour(none ? FailedText() : QuietText());
  lblUploads_->SetLabel(Shown(TextOf(uploads)));
  cmdMakeUpload_->Show(none);
  GetParent()->Layout();
}

}  // namespace ui
