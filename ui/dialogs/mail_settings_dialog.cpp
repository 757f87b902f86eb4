#include "ui/dialogs/mail_settings_dialog.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/clipboard.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kFieldWidth = 220;
const wxSize kNotesSize(480, 130);

// The programs are those of docs/mail.md.
constexpr const char* kNotes =
    "邮件只在这台电脑的邮件用户之间传递：发件人和收件人都必须是这里的用户。"
    "寄往别的邮件服务器（例如 QQ 邮箱）的邮件不会送出，别处寄来的也收不到。\n\n"
    "地址里只有 @ 前面的用户名有用，@ 后面写什么都可以。\n\n"
    "发信（SMTP）不要登录：请把“身份验证”设为“无”。收信（POP3）用上面的用户名和密码。\n\n"
    "密码并不保护邮箱：不登录，或者密码不对，也能收信。连接没有加密，请不要传递秘密。\n\n"
    "能发信的：swaks、curl、Python 的 smtplib。\n"
    "能收信的：mpop 和 Python 的 poplib，但一次只能收一封；curl 要用特别的命令，见文档。\n"
    "不能收信的：fetchmail。\n\n"
    "一次收几封邮件的程序，收完第一封后就会出错：请让它一次只收一封，"
    "或者直接在“E-Mail 服务”页里看邮件。\n\n"
    "一个邮箱最多有 49 封邮件。再来的邮件，对方也会得到“已收到”的回答，但不会保存。\n\n"
    "邮件程序断开前说“再见”（QUIT）以后，附件才会解到邮箱的文件夹里；"
    "不管是什么都会解出来，所以请不要随便打开那里的文件。";

std::string OtherServers(const std::vector<std::string>& servers) {
  std::string others;
  for (std::size_t i = 1; i < servers.size(); ++i) others += (i == 1 ? "" : "、") + servers[i];
  return others.empty() ? "" : "这台电脑还有别的地址：" + others + "。\n\n";
}

}  // namespace

frmMailSettings::frmMailSettings(wxWindow* parent, const MailProgramSettings& settings)
    : wxDialog(parent, wxID_ANY, Shown("邮件程序的设置"), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
  Named(this, "frmMailSettings");
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags next =
      wxSizerFlags().Expand().Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kEdge));
  column->Add(MakeRows(settings), next);
  txtNotes =
      Named(new wxTextCtrl(this, wxID_ANY, Shown(OtherServers(settings.servers) + kNotes),
                           wxDefaultPosition, FromDIP(kNotesSize), wxTE_MULTILINE | wxTE_READONLY),
            "txtNotes");
  Describe(*txtNotes, "须知");
  column->Add(txtNotes, wxSizerFlags(next).Proportion(1));
  cmdCopyAll = MakeActionButton(this, "cmdCopyAll", "复制全部(&A)", [this] {
    std::string all;
    for (const auto& [label, value] : rows_) {
      all.append(label).append("：").append(value).append("\n");
    }
    CopyToClipboard(all);
  });
  wxButton* close = MakeButton(this, "cmdClose", "关闭(&C)", wxID_CANCEL);
  auto* buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->Add(cmdCopyAll);
  buttons->AddStretchSpacer();
  buttons->Add(close);
  column->Add(buttons, wxSizerFlags().Expand().Border(wxALL, FromDIP(kEdge)));
  SetSizerAndFit(column);
  // On a screen that is too small, all but the buttons scrolls.
  SetLayoutAdaptationMode(wxDIALOG_ADAPTATION_MODE_ENABLED);
  SetEscapeId(wxID_CANCEL);
  close->SetDefault();
  ShowAsMain(*close);
  close->SetFocus();
  CentreOnParent();
}

wxSizer* frmMailSettings::MakeRows(const MailProgramSettings& settings) {
  auto* grid = new wxFlexGridSizer(3, FromDIP(wxSize(kGap, kTightGap)));
  grid->AddGrowableCol(1);
  const std::string& server = settings.servers.front();
  AddRow(*grid, "Address", "邮件地址", settings.user + "@" + settings.domain);
  AddRow(*grid, "UserName", "用户名", settings.user);
  AddRow(*grid, "Password", "密码", settings.password);
  AddRow(*grid, "Incoming", "收信服务器（POP3）", server);
  AddRow(*grid, "IncomingPort", "收信端口", std::to_string(settings.pop3Port));
  AddRow(*grid, "Outgoing", "发信服务器（SMTP）", server);
  AddRow(*grid, "OutgoingPort", "发信端口", std::to_string(settings.smtpPort));
  AddRow(*grid, "Encryption", "加密", "无");
  return grid;
}

void frmMailSettings::AddRow(wxSizer& grid, const char* name, const char* label,
                             const std::string& value) {
  rows_.emplace_back(label, value);
  const std::string suffix = name;
  auto* text = new wxStaticText(this, wxID_ANY, Shown(std::string(label) + "："));
  wxTextCtrl* field = MakeField(this, ("txt" + suffix).c_str(), kFieldWidth, wxTE_READONLY);
  field->ChangeValue(Shown(value));
  Describe(*field, label);
  wxButton* copy = MakeActionButton(this, ("cmdCopy" + suffix).c_str(), "复制",
                                    [value] { CopyToClipboard(value); });
  Describe(*copy, std::string("复制") + label);
  grid.Add(text, wxSizerFlags().CentreVertical());
  grid.Add(field, wxSizerFlags().Expand().CentreVertical());
  grid.Add(copy, wxSizerFlags().CentreVertical());
}

}  // namespace ui
