#include "ui/pages/reach_rows.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <initializer_list>

#include "core/service_addresses.h"
#include "core/start_diagnosis.h"
#include "text/strings.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/service_commands.h"

namespace ui {
namespace {

constexpr int kAddressWidth = 240;  // minimum

constexpr const char* kNoNetwork = "这台电脑没有连接到网络，只有它自己能打开。";
constexpr const char* kBareAnswers = "只发送网页内容，浏览器只在端口 80 上显示";
constexpr const char* kPortNote =
    "端口不是 80，手机和浏览器打不开您的网页。\n请改为适合今天的浏览器，或者把端口改为 80。";

wxStaticText* MakeText(wxWindow& page, const char* name, const char* text) {
  return Named(new wxStaticText(&page, wxID_ANY, Shown(text)), name);
}

wxStaticText* MakeQuietText(wxWindow& page, const char* name, const char* text) {
  wxStaticText* label = MakeText(page, name, text);
  label->SetForegroundColour(QuietText());
  return label;
}

void Hide(std::initializer_list<wxWindow*> controls) {
  for (wxWindow* control : controls) control->Hide();
}

wxSizerFlags Centred() { return wxSizerFlags().CentreVertical(); }

}  // namespace

ReachRows::ReachRows(wxWindow& page, core::ServiceKind service, ServiceCommands& commands)
    : page_(page), service_(service), commands_(commands) {}

wxSizer* ReachRows::MakeRows() {
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, page_.FromDIP(kTightGap));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakePorts(), wxSizerFlags().Expand());
  column->Add(MakeRestart(), below);
  column->Add(MakeAnswers(), below);
  column->Add(MakePortNote(), below);
  column->Add(MakeAddresses(), below);
  column->Add(MakeTest(), below);
  return column;
}

wxSizer* ReachRows::MakePorts() {
  portsHeading_ = MakeQuietText(page_, "lblPortsHeading", "端口：");
  ports_ = MakeText(page_, "lblPorts", "");
  changePort_ = MakeActionButton(&page_, "cmdChangePort", "更改端口(&U)...",
                                 [this] { commands_.ChangePort(service_); });
  Hide({portsHeading_, ports_, changePort_});
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(portsHeading_, Centred());
  row->Add(ports_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, page_.FromDIP(kGap)));
  row->Add(changePort_, Centred());
  return row;
}

wxSizer* ReachRows::MakeRestart() {
  restartNote_ = MakeText(page_, "lblRestartNote", "");
  restart_ = MakeActionButton(&page_, "cmdRestart", "重新启动服务(&B)",
                              [this] { commands_.Restart(service_); });
  Hide({restartNote_, restart_});
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(restartNote_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, page_.FromDIP(kGap)));
  row->Add(restart_, Centred());
  return row;
}

wxSizer* ReachRows::MakeAnswers() {
  answersHeading_ = MakeQuietText(page_, "lblAnswersHeading", "回答方式：");
  answers_ = MakeText(page_, "lblAnswers", "");
  chooseAnswers_ = MakeActionButton(&page_, "cmdChooseAnswers", "更改方式(&A)...",
                                    [this] { commands_.ChooseAnswers(); });
  Hide({answersHeading_, answers_, chooseAnswers_});
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(answersHeading_, Centred());
  row->Add(answers_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, page_.FromDIP(kGap)));
  row->Add(chooseAnswers_, Centred());
  return row;
}

wxSizer* ReachRows::MakePortNote() {
  portNote_ = MakeText(page_, "lblPortNote", "");
  portNote_->SetForegroundColour(FailedText());
  forBrowsers_ = MakeActionButton(&page_, "cmdForBrowsers", "让浏览器能打开(&E)...",
                                  [this] { commands_.AnswerForBrowsers(); });
  Hide({portNote_, forBrowsers_});
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(portNote_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, page_.FromDIP(kGap)));
  row->Add(forBrowsers_, Centred());
  return row;
}

wxSizer* ReachRows::MakeAddresses() {
  addressHeading_ = MakeQuietText(page_, "lblReachHeading", "给别人的地址：");
  address_ = Named(new wxStaticText(&page_, wxID_ANY, "", wxDefaultPosition,
                                    page_.FromDIP(wxSize(kAddressWidth, -1)), wxST_ELLIPSIZE_END),
                   "lblReach");
  copy_ = MakeActionButton(&page_, "cmdCopyReach", "复制(&C)", [this] {
    if (!addresses_.empty()) commands_.GiveAddress(addresses_.front());
  });
  showQrCode_ = MakeActionButton(&page_, "cmdShowQrCode", "二维码(&Q)...", [this] {
    if (!addresses_.empty()) commands_.ShowQrCode(addresses_);
  });
  Hide({addressHeading_, address_, copy_, showQrCode_});
  const int gap = page_.FromDIP(kGap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(addressHeading_, Centred());
  row->Add(address_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
  row->Add(copy_, Centred());
  row->Add(showQrCode_, Centred().Border(wxLEFT, gap));
  return row;
}

wxSizer* ReachRows::MakeTest() {
  test_ = MakeText(page_, "lblTest", "");
  copyCommand_ = MakeActionButton(&page_, "cmdCopyTestCommand", "复制命令(&Y)",
                                  [this] { commands_.CopyForUser(testCommand_); });
  Hide({test_, copyCommand_});
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(test_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, page_.FromDIP(kGap)));
  row->Add(copyCommand_, Centred());
  return row;
}

void ReachRows::SetPorts(const std::string& text) {
  if (Typed(ports_->GetLabelText()) == text && ports_->IsShown() == !text.empty()) return;
  portsHeading_->Show(!text.empty());
  ShowFact(*ports_, text, *changePort_);
}

void ReachRows::SetRestartNote(const std::string& text) {
  ShowFact(*restartNote_, text, *restart_);
}

// Empty hides the fact and what belongs to it.
void ReachRows::ShowFact(wxStaticText& fact, const std::string& text, wxWindow& companion) {
  const bool shown = !text.empty();
  if (Typed(fact.GetLabelText()) == text && fact.IsShown() == shown) return;
  fact.SetLabelText(Shown(text));
  fact.Show(shown);
  companion.Show(shown);
  page_.Layout();
}

void ReachRows::SetAddresses(const std::vector<std::string>& addresses, bool isRunning) {
  const bool isSame = addresses == addresses_ && isRunning == address_->IsShown();
  if (isSame) return;
  addresses_ = addresses;
  const bool isReached = isRunning && !addresses.empty();
  address_->SetLabelText(Shown(isReached ? text::Joined(addresses, "   ") : kNoNetwork));
  address_->SetToolTip(Shown(addresses.size() > 1 ? text::Joined(addresses, "\n") : ""));
  addressHeading_->Show(isRunning);
  address_->Show(isRunning);
  copy_->Show(isReached);
  showQrCode_->Show(isReached && core::IsReachedByUrl(service_));
  page_.Layout();
}

void ReachRows::SetAnswers(bool withHttp, bool areShownByBrowsers) {
  answersHeading_->Show();
  const std::string forBrowsers = std::string(core::kForBrowsers) + "（HTTP）";
  ShowFact(*answers_, withHttp ? forBrowsers : kBareAnswers, *chooseAnswers_);
  if (areShownByBrowsers && forBrowsers_->HasFocus()) chooseAnswers_->SetFocus();
  ShowFact(*portNote_, areShownByBrowsers ? "" : kPortNote, *forBrowsers_);
}

void ReachRows::SetTest(const core::ReachVerdict& verdict) {
  testCommand_ = verdict.command;
  test_->SetForegroundColour(verdict.works ? RunningText() : QuietText());
  test_->SetLabelText(Shown(verdict.text));
  test_->Show(!verdict.text.empty());
  copyCommand_->Show(!verdict.command.empty());
  page_.Layout();
}

}  // namespace ui
