#include "ui/pages/welcome_frame.h"

#include <wx/button.h>
#include <wx/hyperlink.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/controls/traffic_curve.h"

namespace ui {
namespace {

constexpr int kLogoSize = 56;
constexpr double kNameFactor = 1.8;
constexpr int kPurposeWidth = 160;  // minimum
constexpr const char* kNobody = "现在没有人连接";

}  // namespace

WelcomeFrame::WelcomeFrame(wxWindow* parent, Actions actions)
    : Page(parent), actions_(std::move(actions)) {
  Named(this, "fraWelcome");
  const int edge = FromDIP(kEdge);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakeHeader(), wxSizerFlags().Expand().Border(wxALL, edge));
  steps_ = new FirstSteps(this, actions_.firstSteps);
  column->Add(steps_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, edge));
  wxSizer* cards = MakeCards();
  steps_->FitInto(cards->CalcMin().x);  // so that the steps do not make the window wider
  column->Add(cards, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, edge));
  column->Add(MakeNow(), wxSizerFlags().Expand().Border(wxALL, edge));
  SetSizer(column);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    UseWidth();
    event.Skip();
  });
  EnableTogether();
}

wxSizer* WelcomeFrame::MakeHeader() {
  picIcon = Named(new wxStaticBitmap(this, wxID_ANY, Art("tarnwerk", kLogoSize)), "picIcon");
  auto* purpose =
      new wxStaticText(this, wxID_ANY, Shown("让您的电脑成为网站、文件与邮件服务器"),
                       wxDefaultPosition, FromDIP(wxSize(kPurposeWidth, -1)), wxST_ELLIPSIZE_END);
  purpose->SetForegroundColour(QuietText());
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, "Tarnwerk", kNameFactor));
  texts->Add(purpose, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap)));
  startAll_ =
      MakeActionButton(this, "cmdStartAll", "全部启动(&A)", [this] { actions_.startAll(); });
  stopAll_ = MakeActionButton(this, "cmdStopAll", "全部停止(&L)", [this] { actions_.stopAll(); });
  ShowAsMain(*startAll_);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(picIcon, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags(1).CentreVertical());
  for (wxButton* button : {startAll_, stopAll_}) {
    row->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
  }
  return row;
}

wxSizer* WelcomeFrame::MakeCards() {
  auto* cards = new wxGridSizer(1, static_cast<int>(cards_.size()), 0, FromDIP(kEdge));
  for (const core::ServiceKind service : core::kServices) {
    cards_[core::IndexOf(service)] = new ServiceCard(this, service, actions_.cards);
    cards->Add(&CardOf(service), wxSizerFlags().Expand());
  }
  return cards;
}

wxSizer* WelcomeFrame::MakeNow() {
  clients_ = MakeAddress(this, "lblClients", actions_.showConnected);
  // Made in the order of reading, in which Tab moves.
  protectionRow_ = MakeProtection();
  traffic_ = new TrafficCurve(this);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(clients_, wxSizerFlags().CentreVertical());
  row->AddStretchSpacer();
  row->Add(protectionRow_, wxSizerFlags().CentreVertical());
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(row, wxSizerFlags().Expand());
  column->Add(traffic_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap)));
  ShowClients("", {});
  return column;
}

wxSizer* WelcomeFrame::MakeProtection() {
  protection_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblProtection");
  protection_->SetForegroundColour(QuietText());
  Link* change = MakeAddress(this, "lblChangeProtection", actions_.changeProtection);
  ShowAddress(*change, "更改...", FromDIP(kPurposeWidth));
  Describe(*change, "更改保护...");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(protection_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  row->Add(change, wxSizerFlags().CentreVertical());
  return row;
}

void WelcomeFrame::ShowClients(const std::string& clients,
                               const std::deque<core::TrafficHistory::Sample>& traffic) {
  const bool isAnybody = !clients.empty();
  const std::string text = isAnybody ? clients : kNobody;
  if (Typed(clients_->GetLabel()) != text) {
    const int room = GetClientSize().x - protectionRow_->CalcMin().x - FromDIP(3 * kEdge);
    ShowAddress(*clients_, text, std::max(room, FromDIP(kLogoSize * 4)));
    clients_->SetToolTip(Shown(isAnybody ? "查看他们在做什么" : ""));
    Layout();
  }
  if (clients_->HasFocus() && !isAnybody)
    (stopAll_->IsEnabled() ? stopAll_ : startAll_)->SetFocus();
  clients_->Enable(isAnybody);
  traffic_->ShowSamples(traffic);
}

void WelcomeFrame::ShowProtection(const std::string& text, const std::string& parts) {
  protection_->SetToolTip(Shown(parts));
  if (Typed(protection_->GetLabelText()) == text) return;
  protection_->SetLabelText(Shown(text));
  Layout();
}

void WelcomeFrame::ShowOutcome(const core::Outcome& outcome,
                               const std::optional<core::Diagnosis>& diagnosis) {
  using Event = core::Outcome::Event;
  const ServiceState other =
      outcome.event == Event::kStartFailed ? ServiceState::kFailed : ServiceState::kOff;
  SetDiagnosis(outcome.frame, diagnosis);
  SetAddress(outcome.frame, outcome.address);
  CardOf(outcome.frame).SetState(outcome.CanBeStopped() ? ServiceState::kOn : other);
  EnableTogether();
}

void WelcomeFrame::SetAddress(core::ServiceKind service, const std::string& text) {
  CardOf(service).SetAddress(text);
}

void WelcomeFrame::SetRemark(core::ServiceKind service, const std::string& text) {
  CardOf(service).SetRemark(text);
}

void WelcomeFrame::SetReach(core::ServiceKind service, const std::vector<std::string>& addresses) {
  CardOf(service).SetReach(addresses);
}

void WelcomeFrame::SetDiagnosis(core::ServiceKind service,
                                const std::optional<core::Diagnosis>& diagnosis) {
  CardOf(service).SetDiagnosis(diagnosis);
}

void WelcomeFrame::WarnOfChanges(bool warned) {
  if (CardOf(core::ServiceKind::kFtp).WarnOfChanges(warned)) Layout();
}

// Addresses are cut to the cards rather than widening them beyond the window.
void WelcomeFrame::UseWidth() {
  steps_->FitInto(GetClientSize().x - FromDIP(2 * kEdge));
  const int cards = static_cast<int>(cards_.size());
  const int width = (GetClientSize().x - FromDIP(kEdge) * (cards + 1)) / cards - FromDIP(2 * kEdge);
  for (ServiceCard* card : cards_) card->UseWidth(width);
}

void WelcomeFrame::EnableTogether() {
  const auto runs = [](const ServiceCard* each) { return each->IsRunning(); };
  const bool allRun = std::all_of(cards_.begin(), cards_.end(), runs);
  const bool anyRuns = std::any_of(cards_.begin(), cards_.end(), runs);
  const bool startHadFocus = startAll_->HasFocus();
  const bool stopHadFocus = stopAll_->HasFocus();
  startAll_->Enable(!allRun);
  stopAll_->Enable(anyRuns);
  // Moves the focus to the button that is still enabled.
  if (startHadFocus && allRun) stopAll_->SetFocus();
  if (stopHadFocus && !anyRuns) startAll_->SetFocus();
}

// The page's main button is the next step, if there is one.
void WelcomeFrame::ShowSteps(const std::optional<StepStates>& states) {
  const bool changed = states ? steps_->ShowSteps(*states) : steps_->ShowAtAll(false);
  ShowAsMain(*startAll_, !steps_->IsShown());
  if (!changed) return;
  UseWidth();
  Layout();
}

}  // namespace ui
