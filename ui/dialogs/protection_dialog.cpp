#include "ui/dialogs/protection_dialog.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <string>

#include "core/protection.h"
#include "settings/change.h"
#include "text/conversions.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/save_report.h"

namespace ui {
namespace {

using Reach = core::ProtectionOptions::Reach;

constexpr int kLimitWidth = 64;

constexpr const char* kReachText = "对三项服务都有效。其他人一连接就被断开，什么也收不到。";
constexpr const char* kConfineText =
    "访问者用任何名称都到不了主目录之外；上传、改名和删除只限于上传目录，没有设置\n"
    "它就都不行；网页程序只从 cgi-bin 运行；FTP 的数据只和访问者自己的电脑来往。";
constexpr const char* kFollowLinksText = "访问者可以沿着您自己放的链接走，但只能读取。";
constexpr const char* kSignInText =
    "取文件（FTP）和收邮件（POP3）的人要输入邮件用户的用户名和密码。\n"
    "这里什么都不加密，密码和内容在网络上可能被人看到。";
constexpr const char* kHonestText =
    "对发信和收信的人：邮件没有存下就不答复“已收到”，例如邮箱或磁盘已满、收件人多于\n"
    "十一个、邮件过大。空闲十分钟的连接会断开；一个人断开不影响别人。";

wxRadioButton* MakeOption(wxWindow* parent, const char* name, const char* text, long style = 0) {
  return Named(
      new wxRadioButton(parent, wxID_ANY, Shown(text), wxDefaultPosition, wxDefaultSize, style),
      name);
}

wxCheckBox* AddTick(wxWindow* parent, Column& column, const char* name, const char* text,
                    const char* explanation, int indent = 0) {
  const ExplainedBox tick = MakeExplainedBox(parent, name, text, explanation, indent);
  column.Add(tick.sizer);
  return tick.box;
}

}  // namespace

frmProtection::frmProtection(wxWindow* parent, const settings::Program& program,
                             core::Protection& protection)
    : wxDialog(parent, wxID_ANY, Shown("安全")), program_(program), protection_(protection) {
  SetName("frmProtection");
  Column column(this, kEdge);
  column.Add(MakeReach());
  column.Add(MakeRights());
  cmdRecommended =
      MakeActionButton(this, "cmdRecommended", "采用推荐的设置(&C)", [this] { Recommend(); });
  cmdRecommended->SetToolTip(Shown("局域网，只限主目录"));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(cmdRecommended);
  column.Add(row);
  const DialogButtons buttons = MakeDialogButtons(*this, "cmdOK", "cmdCancel");
  cmdOK = buttons.ok;
  cmdCancel = buttons.cancel;
  for (wxCheckBox* box : {chkConfine, chkHonest}) {
    box->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { EnableParts(); });
  }
  cmdOK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnConfirm(); });
  Fill(*this, column.Sizer(), buttons);
  protection.Load();
  ShowOptions(protection.Options());
  for (wxRadioButton* option : {optAll, optLan, optLocal}) {
    if (option->GetValue()) option->SetFocus();
  }
  CentreOnParent();
}

wxSizer* frmProtection::MakeReach() {
  Group group(this, "谁可以连接");
  wxWindow* parent = group.Parent();
  optAll = MakeOption(parent, "optAll", "所有人(&A)", wxRB_GROUP);
  optLan = MakeOption(parent, "optLan", "局域网(&L)");
  optLocal = MakeOption(parent, "optLocal", "仅本机(&T)");
  group.Content().Add(MakeRow(this, {optAll, optLan, optLocal}));
  group.Content().Add(Explain(*optAll, kReachText));
  return group.Sizer();
}

wxSizer* frmProtection::MakeRights() {
  Group group(this, "访问者可以做什么");
  wxWindow* parent = group.Parent();
  Column& column = group.Content();
  chkConfine = AddTick(parent, column, "chkConfine", "只限主目录(&R)", kConfineText);
  chkFollowLinks = AddTick(parent, column, "chkFollowLinks", "链接可以通向主目录之外(&K)",
                           kFollowLinksText, kIndent);
  chkSignIn = AddTick(parent, column, "chkSignIn", "要求登录(&I)", kSignInText);
  chkHonest = AddTick(parent, column, "chkHonest", "如实答复(&H)", kHonestText);
  MakeMessageLimit(parent, column);
  return group.Sizer();
}

void frmProtection::MakeMessageLimit(wxWindow* parent, Column& column) {
  auto* label = new wxStaticText(parent, wxID_ANY, Shown("邮件最大(&M)："));
  txtMessageLimit = MakeField(parent, "txtMessageLimit", kLimitWidth);
  auto* unit = new wxStaticText(parent, wxID_ANY, "MiB");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->AddSpacer(FromDIP(kIndent));
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(txtMessageLimit, wxSizerFlags().Border(wxLEFT | wxRIGHT, FromDIP(kTightGap)));
  row->Add(unit, wxSizerFlags().CentreVertical());
  column.Add(row);
}

void frmProtection::ShowOptions(const core::ProtectionOptions& options) {
  optAll->SetValue(options.reach == Reach::kAll);
  optLan->SetValue(options.reach == Reach::kLan);
  optLocal->SetValue(options.reach == Reach::kLocal);
  chkConfine->SetValue(options.confine);
  chkFollowLinks->SetValue(options.followLinks);
  chkSignIn->SetValue(options.signIn);
  chkHonest->SetValue(options.honest);
  txtMessageLimit->ChangeValue(std::to_string(options.messageLimit));
  EnableParts();
}

void frmProtection::Recommend() {
  optLan->SetValue(true);
  chkConfine->SetValue(true);
  EnableParts();
}

void frmProtection::EnableParts() {
  chkFollowLinks->Enable(chkConfine->GetValue());
  txtMessageLimit->Enable(chkHonest->GetValue());
}

Reach frmProtection::EnteredReach() const {
  if (optLocal->GetValue()) return Reach::kLocal;
  return optLan->GetValue() ? Reach::kLan : Reach::kAll;
}

std::optional<core::ProtectionOptions> frmProtection::Entered() {
  core::ProtectionOptions options = {.reach = EnteredReach(),
                                     .confine = chkConfine->GetValue(),
                                     .followLinks = chkFollowLinks->GetValue(),
                                     .signIn = chkSignIn->GetValue(),
                                     .honest = chkHonest->GetValue(),
                                     .messageLimit = protection_.Options().messageLimit};
  if (!options.honest) return options;
  const auto limit = text::ToInt16(Typed(txtMessageLimit->GetValue()));
  if (!limit || *limit < 1) {
    Warn(this, "邮件最大应为 1 到 32767 的数字！");
    txtMessageLimit->SetFocus();
    txtMessageLimit->SelectAll();
    return std::nullopt;
  }
  options.messageLimit = *limit;
  return options;
}

void frmProtection::OnConfirm() {
  const auto entered = Entered();
  if (!entered) return;
  settings::Change change(program_);
  const bool isChanged = core::WriteProtection(change, program_, *entered);
  const std::error_code error = isChanged ? change.Save() : change.Fault();
  if (!IsSaved(this, program_, error)) return;
  protection_.Load();
  EndModal(wxID_OK);
}

}  // namespace ui
