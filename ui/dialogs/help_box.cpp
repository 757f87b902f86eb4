#include "ui/dialogs/help_box.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/program_location.h"
#include "platform/shell.h"
#include "text/path_text.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr const char* kGuide = "使用说明.html";
const wxSize kTextSize(520, 380);

constexpr const char* kEssentials =
    "三步开始\n"
    "\n"
    "1. 网站：把网页放进 Web 主目录（首页名为 index.htm），在“Web 服务”页点击“启动”，"
    "再点击显示的地址，浏览器就会打开您的主页。\n"
    "2. 文件：把要共享的文件放进 FTP 主目录，启动 FTP 服务。任何用户名和密码都可以登录下载；"
    "只有选项中的上传目录可以写入。\n"
    "3. 邮件：在“E-Mail 服务”页添加用户，启动服务，然后在邮件程序中把 SMTP 和 POP3 "
    "服务器都设为这台电脑。\n"
    "\n"
    "让别人也能访问\n"
    "\n"
    "同一网络中的其他电脑用这台电脑的 IP 地址访问。在 Web 选项中勾选“适合今天的浏览器”以后，"
    "手机和各种浏览器在任何端口都能打开您的网页；不勾选时，浏览器只在 80 端口上显示它们。"
    "防火墙须允许所用的端口。\n"
    "\n"
    "服务不能启动\n"
    "\n"
    "最常见的原因是端口已被另一个程序占用。程序目录中的 RunErr.Log 记录了每次失败的原因。\n"
    "\n"
    "托盘\n"
    "\n"
    "最小化窗口后，程序在托盘中继续运行；右击托盘图标可以启动、停止服务或显示主窗口。"
    "关闭主窗口则停止所有服务并退出程序。\n"
    "\n"
    "命令行\n"
    "\n"
    "Tarnwerk START　启动全部服务\n"
    "Tarnwerk START SHOW　启动全部服务，只显示托盘图标\n"
    "Tarnwerk STOP　结束正在运行的程序\n";

class HelpBox : public wxDialog {
 public:
  explicit HelpBox(wxWindow* parent)
      : wxDialog(parent, wxID_ANY, Shown("Tarnwerk 帮助"), wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    Named(this, "frmHelp");
    auto* text = Named(new wxTextCtrl(this, wxID_ANY, Shown(kEssentials), wxDefaultPosition,
                                      FromDIP(kTextSize), wxTE_MULTILINE | wxTE_READONLY),
                       "txtHelp");
    wxButton* close = MakeButton(this, "cmdClose", "关闭(&C)", wxID_CANCEL);
    const int edge = FromDIP(kEdge);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(text, wxSizerFlags(1).Expand().Border(wxALL, edge));
    column->Add(close, wxSizerFlags().Right().Border(wxRIGHT | wxBOTTOM, edge));
    SetSizerAndFit(column);
    close->SetDefault();
    ShowAsMain(*close);
    close->SetFocus();
    CentreOnParent();
  }
};

}  // namespace

void ShowHelp(wxWindow* parent, const settings::Program& program) {
  // An installed program's directory is the user's own and has no guide.
  const std::string beside = platform::PathText(platform::ExecutablePath().parent_path());
  for (const std::string& guide : {program.File(kGuide), ModCommon::AddSlash(beside) + kGuide}) {
    if (ModCommon::FileExists(guide)) {
      platform::OpenWithShell(platform::PathTextForUser(guide));
      return;
    }
  }
  HelpBox(parent).ShowModal();
}

}  // namespace ui
