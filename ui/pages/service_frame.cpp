#include "ui/pages/service_frame.h"

#include <wx/button.h>
#include <wx/hyperlink.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <utility>

#include "core/service_texts.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/connection_list.h"
#include "ui/pages/latest_log.h"
#include "ui/pages/live_panel.h"
#include "ui/pages/recent_panel.h"
#include "ui/pages/remedies.h"
#include "ui/pages/service_commands.h"

namespace ui {
namespace {

constexpr int kPictureSize = 48;
constexpr int kStateSize = 20;
constexpr double kTitleFactor = 1.5;
constexpr int kAddressWidth = 440;  // the maximum for the address
constexpr int kPathWidth = 240;     // the minimum for addresses
constexpr int kRootWidth = 140;     // the minimum for the root directory

constexpr const char* kLiveTab = "正在进行";

wxSizerFlags InRow(wxWindow* window) {
  return wxSizerFlags().CentreVertical().Border(wxRIGHT, window->FromDIP(kGap));
}

wxStaticText* MakeQuietText(wxWindow* parent, const wxString& text, long style = 0) {
  auto* label = new wxStaticText(parent, wxID_ANY, text, wxDefaultPosition, wxDefaultSize, style);
  label->SetForegroundColour(QuietText());
  return label;
}

}  // namespace

ServiceFrame::ServiceFrame(wxWindow* parent, core::ServiceKind service, ServiceCommands& commands)
    : Page(parent), service_(service), commands_(commands), reach_(*this, service, commands) {
  Named(this, LooksOf(service).frame);
  const int edge = FromDIP(kEdge);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, edge);
  column->Add(MakeHeader(), row);
  // Above the facts, which come and go, so that the buttons do not move.
  column->Add(MakeButtons(), row);
  column->Add(MakeFacts(), row);
  column->Add(MakeTabs(), wxSizerFlags(1).Expand().Border(wxALL, edge));
  SetSizer(column);
  hint_->SetLabel(Shown(core::TextsOf(service).stopped.hint));
  ShowButtons(false);
}

std::function<void()> ServiceFrame::Calling(void (ServiceCommands::*command)(core::ServiceKind)) {
  return [this, command] { (commands_.*command)(service_); };
}

wxSizer* ServiceFrame::MakeHeader() {
  const ServiceLooks& looks = LooksOf(service_);
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, looks.title, kTitleFactor));
  texts->Add(MakeQuietText(this, Shown(looks.purpose)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art(looks.picture, kPictureSize)),
           wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags(1).CentreVertical());
  return row;
}

wxSizer* ServiceFrame::MakeFacts() {
  const ServiceLooks& looks = LooksOf(service_);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakeOutcome(looks));
  column->Add(MakeReason(), below);
  hint_ = Named(MakeQuietText(this, ""), looks.hint);
  column->Add(hint_, below);
  column->Add(MakeRoot(looks), wxSizerFlags().Expand().Border(wxTOP, FromDIP(kGap)));
  column->Add(MakeRootMissing(), below);
  column->Add(reach_.MakeRows(), below);
  return column;
}

wxSizer* ServiceFrame::MakeOutcome(const ServiceLooks& looks) {
  state_ = new wxStaticBitmap(this, wxID_ANY, Art("off", kStateSize));
  result_ = Named(new wxStaticText(this, wxID_ANY, Shown(looks.idle)), looks.result);
  address_ = MakeAddress(this, looks.address, Calling(&ServiceCommands::OpenAddress));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(state_, InRow(this));
  row->Add(result_, wxSizerFlags().CentreVertical());
  row->Add(address_, wxSizerFlags().CentreVertical());
  return row;
}

wxSizer* ServiceFrame::MakeReason() {
  reason_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblReason");
  remedy_ = MakeActionButton(this, "cmdRemedy", "", [this] {
    if (diagnosis_) commands_.Follow(service_, *diagnosis_);
  });
  reason_->Hide();
  remedy_->Hide();
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(reason_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(remedy_, wxSizerFlags().CentreVertical());
  return row;
}

wxSizer* ServiceFrame::MakeRoot(const ServiceLooks& looks) {
  rootDir_ = Named(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition,
                                    FromDIP(wxSize(kRootWidth, -1)), wxST_ELLIPSIZE_MIDDLE),
                   looks.rootDir);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(MakeQuietText(this, Shown("主目录：")), wxSizerFlags().CentreVertical());
  row->Add(rootDir_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(
      MakeActionButton(this, "cmdOpenRoot", "打开文件夹(&F)", Calling(&ServiceCommands::OpenRoot)),
      wxSizerFlags().CentreVertical());
  if (!looks.canMove) return row;
  row->Add(
      MakeActionButton(this, "cmdChangeRoot", "更换(&Z)...", Calling(&ServiceCommands::ChangeRoot)),
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  return row;
}

wxSizer* ServiceFrame::MakeRootMissing() {
  rootMissing_ =
      Named(new wxStaticText(this, wxID_ANY, Shown("这个文件夹不存在，他人访问时什么也得不到。")),
            "lblRootMissing");
  rootMissing_->SetForegroundColour(FailedText());
  makeRoot_ =
      MakeActionButton(this, "cmdMakeRoot", "新建文件夹(&W)", Calling(&ServiceCommands::MakeRoot));
  SetRootMissing(false);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(rootMissing_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(makeRoot_, wxSizerFlags().CentreVertical());
  return row;
}

wxWindow* ServiceFrame::MakeTabs() {
  tabs_ = Named(MakeNotebook(this), "tabs");
  Describe(*tabs_, LooksOf(service_).title);
  bodyPage_ = new wxPanel(tabs_);
  body_ = new wxBoxSizer(wxVERTICAL);
  WithMargin(bodyPage_, body_);
  using net::ConnectionReport;
  live_ = new LivePanel(
      tabs_,
      {.copyAddress = [this](const ConnectionReport& of) { commands_.CopyForUser(of.address); },
       .openFolder =
           [this](const ConnectionReport& of) { commands_.OpenFolderOf(of.activity.path); },
       .disconnect = [this](const ConnectionReport& of) { commands_.Disconnect(service_, of); }});
  recent_ = new RecentPanel(tabs_, Calling(&ServiceCommands::ExportRecent));
  log_ = new LatestLog(tabs_);
  tabs_->AddPage(bodyPage_, "");
  tabs_->AddPage(live_, Shown(kLiveTab));
  tabs_->AddPage(recent_, Shown("最近"));
  tabs_->AddPage(log_, Shown("日志"));
  return tabs_;
}

wxSizer* ServiceFrame::MakeButtons() {
  const ServiceLooks& looks = LooksOf(service_);
  start_ = MakeActionButton(this, looks.start, "启动(&G)", Calling(&ServiceCommands::Start));
  stop_ = MakeActionButton(this, looks.stop, "停止(&P)", Calling(&ServiceCommands::Stop));
  ShowAsMain(*start_);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(start_, InRow(this));
  row->Add(stop_, InRow(this));
  row->Add(
      MakeActionButton(this, looks.dns, "域名(&D)...", Calling(&ServiceCommands::AskForDomain)),
      InRow(this));
  row->Add(
      MakeActionButton(this, looks.options, "选项(&O)...", Calling(&ServiceCommands::ShowOptions)),
      InRow(this));
  row->Add(
      MakeActionButton(this, "cmdTestReach", "测试一下(&J)", Calling(&ServiceCommands::TestReach)),
      InRow(this));
  return row;
}

void ServiceFrame::ShowOutcome(const core::Outcome& outcome,
                               const std::optional<core::Diagnosis>& diagnosis) {
  const core::OutcomeTexts& texts = core::TextsOf(outcome);
  failed_ = outcome.event == core::Outcome::Event::kStartFailed;
  result_->SetLabel(Shown(texts.result));
  hint_->SetLabel(Shown(texts.hint));
  SetDiagnosis(diagnosis);
  reach_.SetTest({});
  if (outcome.enableAddress) address_->Enable(*outcome.enableAddress);
  SetAddress(outcome.address);
  ShowButtons(outcome.CanBeStopped());
}

void ServiceFrame::SetAddress(const std::string& text) {
  ShowAddress(*address_, text, FromDIP(kAddressWidth));
  Layout();
}

void ServiceFrame::SetRootDir(const std::string& path) {
  rootDir_->SetLabel(Shown(path));
  rootDir_->SetToolTip(Shown(path));
}

void ServiceFrame::ShowButtons(bool running) {
  ShowInstead(running ? *start_ : *stop_, running ? *stop_ : *start_);
  Layout();
}

void ServiceFrame::SetState(ServiceState state) {
  state_->SetBitmap(Art(PictureOf(state), kStateSize));
}

void ServiceFrame::SetDiagnosis(const std::optional<core::Diagnosis>& diagnosis) {
  using Remedy = core::Diagnosis::Remedy;
  diagnosis_ = diagnosis;
  const Remedy remedy = diagnosis ? diagnosis->remedy : Remedy::kNone;
  reason_->SetLabel(Shown(diagnosis ? diagnosis->text : ""));
  reason_->Show(diagnosis.has_value());
  remedy_->SetLabel(Shown(CaptionWithKeyOf(remedy)));
  remedy_->Show(remedy != Remedy::kNone);
  Layout();
}

void ServiceFrame::SetRootMissing(bool missing) {
  if (rootMissing_->IsShown() == missing && makeRoot_->IsShown() == missing) return;
  rootMissing_->Show(missing);
  makeRoot_->Show(missing);
  Layout();
}

void ServiceFrame::ShowConnections(const std::vector<net::ConnectionReport>& connections) {
  const std::size_t open = connections.size();
  const wxString title =
      Shown(open == 0 ? kLiveTab : kLiveTab + ("（" + std::to_string(open) + "）"));
  if (tabs_->GetPageText(1) != title) tabs_->SetPageText(1, title);
  if (IsOnTab(live_)) live_->ShowNow(connections);
}

void ServiceFrame::SetHostNames(std::map<std::string, std::string> names) {
  live_->lstConnections->SetNames(std::move(names));
}

void ServiceFrame::ShowRecent(const std::deque<core::ActivityRecord::Entry>& entries,
                              std::uint64_t version) {
  if (IsOnTab(recent_)) recent_->ShowRecent(entries, version);
}

void ServiceFrame::ShowLog() {
  if (IsOnTab(log_)) log_->ReadLog();
}

bool ServiceFrame::IsOnTab(const wxWindow* page) const { return tabs_->GetCurrentPage() == page; }

void ServiceFrame::TurnTabs(bool forward) {
  tabs_->AdvanceSelection(forward);
  tabs_->SetFocus();  // the focused control may be on the other page
}

void ServiceFrame::ShowLiveTab() {
  tabs_->SetSelection(tabs_->FindPage(live_));
  tabs_->SetFocus();
}

bool ServiceFrame::ShowsRunning() const { return stop_->IsShown(); }

bool ServiceFrame::ShowsAddress() const { return address_->IsShown(); }

wxBoxSizer* ServiceFrame::AddBodyHeading(const char* text) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  tabs_->SetPageText(0, Shown(text));
  row->AddStretchSpacer();
  body_->Add(row, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap)));
  return row;
}

wxButton* ServiceFrame::AddBodyButton(wxBoxSizer* heading, const char* name, const char* text,
                                      std::function<void()> action) {
  wxButton* button = MakeActionButton(bodyPage_, name, text, action);
  heading->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  return button;
}

}  // namespace ui
