#include "ui/pages/welcome_frame.h"

#include <wx/button.h>
#include <wx/hyperlink.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "text/strings.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/card.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/controls/traffic_curve.h"
#include "ui/pages/service_looks.h"

namespace ui {
namespace {

constexpr int kLogoSize = 64;
constexpr int kPictureSize = 56;
constexpr int kStateSize = 16;
constexpr int kAddressWidth = 180;  // minimum
constexpr double kNameFactor = 1.8;
constexpr double kTitleFactor = 1.2;
constexpr const char* kNobody = "现在没有人连接";

// Every card has the same controls, so the names of theirs contain the service: screen readers and
// tests need to tell them apart.
struct CardNames {
  const char* state;
  const char* address;
  const char* secondAddress;
  const char* reason;
  const char* start;
  const char* stop;
  const char* page;
  const char* root;
};

constexpr std::array<CardNames, 3> kNames = {{
    {"lblCardWebState", "lblCardWebAddress", "lblCardWebAddress2", "lblCardWebReason",
     "cmdCardStartWeb", "cmdCardStopWeb", "cmdCardWebPage", "cmdCardWebRoot"},
    {"lblCardFtpState", "lblCardFtpAddress", "lblCardFtpAddress2", "lblCardFtpReason",
     "cmdCardStartFtp", "cmdCardStopFtp", "cmdCardFtpPage", "cmdCardFtpRoot"},
    {"lblCardMailState", "lblCardMailAddress", "lblCardMailAddress2", "lblCardMailReason",
     "cmdCardStartMail", "cmdCardStopMail", "cmdCardMailPage", "cmdCardMailRoot"},
}};

// Of an address or a reason.
int HeightOfTwoLines(wxWindow& parent) {
  return 2 * parent.GetTextExtent(Shown("字")).y + parent.FromDIP(kGap);
}

}  // namespace

WelcomeFrame::WelcomeFrame(wxWindow* parent, Actions actions)
    : Page(parent), actions_(std::move(actions)), addressWidth_(FromDIP(kAddressWidth)) {
  Named(this, "fraWelcome");
  auto* cards = new wxGridSizer(1, static_cast<int>(core::kServices.size()), 0, FromDIP(kEdge));
  for (const core::ServiceKind service : core::kServices) {
    cards->Add(MakeCard(service), wxSizerFlags().Expand());
  }
  const int edge = FromDIP(kEdge);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakeHeader(), wxSizerFlags().Expand().Border(wxALL, edge));
  steps_ = new FirstSteps(this, actions_.firstSteps);
  column->Add(steps_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, edge));
  column->Add(cards, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, edge));
  column->Add(MakeFooter(), wxSizerFlags().Expand().Border(wxALL, edge));
  column->Add(MakeNow(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, edge));
  SetSizer(column);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    UseWidth();
    event.Skip();
  });
  for (const core::ServiceKind service : core::kServices) SetRunning(service, false);
}

wxSizer* WelcomeFrame::MakeHeader() {
  picIcon = Named(new wxStaticBitmap(this, wxID_ANY, Art("tarnwerk", kLogoSize)), "picIcon");
  auto* purpose = new wxStaticText(this, wxID_ANY, Shown("让您的电脑成为网站、文件与邮件服务器"));
  purpose->SetForegroundColour(QuietText());
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, "Tarnwerk", kNameFactor));
  texts->Add(purpose, wxSizerFlags().Border(wxTOP, FromDIP(kTightGap)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(picIcon, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags(1).CentreVertical());
  return row;
}

wxPanel* WelcomeFrame::MakeCard(core::ServiceKind service) {
  const ServiceLooks& looks = LooksOf(service);
  const CardNames& names = kNames[core::IndexOf(service)];
  const auto call = [this, service](std::function<void(core::ServiceKind)> Actions::*action) {
    return [this, service, action] { (actions_.*action)(service); };
  };
  ServiceCard& card = CardOf(service);
  auto* panel = new Card(this);
  card.panel = panel;
  card.stateIcon = new wxStaticBitmap(panel, wxID_ANY, Art("off", kStateSize));
  card.state = Named(new wxStaticText(panel, wxID_ANY, ""), names.state);
  card.addresses = {MakeAddress(panel, names.address, call(&Actions::openAddress)),
                    MakeAddress(panel, names.secondAddress, call(&Actions::openAddress))};
  card.reason = Named(new wxStaticText(panel, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                       wxALIGN_CENTRE_HORIZONTAL),
                      names.reason);
  card.reason->Hide();
  card.start = MakeActionButton(panel, names.start, "启动", call(&Actions::start));
  card.stop = MakeActionButton(panel, names.stop, "停止", call(&Actions::stop));
  auto* state = new wxBoxSizer(wxHORIZONTAL);
  state->Add(card.stateIcon, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kTightGap)));
  state->Add(card.state, wxSizerFlags().CentreVertical());
  // Always as high as two lines, so that the buttons of all cards are in line and do not move.
  auto* address = new wxBoxSizer(wxHORIZONTAL);
  auto* lines = new wxBoxSizer(wxVERTICAL);
  for (wxHyperlinkCtrl* each : card.addresses) lines->Add(each, wxSizerFlags().CentreHorizontal());
  address->Add(lines, wxSizerFlags().CentreVertical());
  address->Add(card.reason, wxSizerFlags().CentreVertical());
  address->Add(0, HeightOfTwoLines(*panel));

  const wxSizerFlags centred = wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(kGap));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(new wxStaticBitmap(panel, wxID_ANY, Art(looks.picture, kPictureSize)),
              wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(kEdge)));
  column->Add(MakeHeading(panel, looks.title, kTitleFactor), centred);
  column->Add(state, centred);
  column->Add(address, wxSizerFlags().CentreHorizontal().Border(wxALL & ~wxTOP, FromDIP(kGap)));
  const wxSizerFlags wide = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kEdge));
  column->Add(card.start, wide);
  column->Add(card.stop, wide);
  column->AddSpacer(FromDIP(kGap));
  wxButton* page = MakeActionButton(panel, names.page, "查看与设置", call(&Actions::showPage));
  wxButton* root = MakeActionButton(panel, names.root, "打开文件夹", call(&Actions::openRoot));
  column->Add(page, wide);
  column->AddSpacer(FromDIP(kGap));
  column->Add(root, wide);
  column->AddSpacer(FromDIP(kEdge));
  // Every card has these buttons, so their names include the service.
  for (wxButton* button : {card.start, card.stop, page, root}) {
    Describe(*button, Typed(button->GetLabel()) + " " + looks.title);
  }
  column->SetMinSize(FromDIP(kAddressWidth + 2 * kGap), -1);
  panel->SetSizer(column);
  return panel;
}

wxSizer* WelcomeFrame::MakeNow() {
  clients_ = Named(new wxStaticText(this, wxID_ANY, Shown(kNobody)), "lblClients");
  clients_->SetForegroundColour(QuietText());
  traffic_ = new TrafficCurve(this);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(clients_, wxSizerFlags().Expand());
  column->Add(traffic_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap)));
  return column;
}

void WelcomeFrame::ShowClients(const std::string& clients,
                               const std::deque<core::TrafficHistory::Sample>& traffic) {
  const wxString text = Shown(clients.empty() ? kNobody : clients);
  if (clients_->GetLabel() != text) clients_->SetLabel(text);
  traffic_->ShowSamples(traffic);
}

wxSizer* WelcomeFrame::MakeFooter() {
  startAll_ =
      MakeActionButton(this, "cmdStartAll", "全部启动(&A)", [this] { actions_.startAll(); });
  stopAll_ = MakeActionButton(this, "cmdStopAll", "全部停止(&L)", [this] { actions_.stopAll(); });
  ShowAsMain(*startAll_);
  for (wxButton* button : {startAll_, stopAll_}) {
    wxSize large = FromDIP(wxSize(160, 36));
    large.IncTo(button->GetBestSize());
    button->SetMinSize(large);
  }
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  row->Add(startAll_);
  row->AddSpacer(FromDIP(kGap));
  row->Add(stopAll_);
  row->AddStretchSpacer();
  return row;
}

void WelcomeFrame::ShowOutcome(const core::Outcome& outcome,
                               const std::optional<core::Diagnosis>& diagnosis) {
  SetReason(outcome.frame, diagnosis ? diagnosis->brief : "");
  SetAddress(outcome.frame, outcome.address);
  SetRunning(outcome.frame, outcome.CanBeStopped());
  if (outcome.event == core::Outcome::Event::kStartFailed) {
    ShowState(CardOf(outcome.frame), "failed", "启动失败", FailedText());
  }
}

void WelcomeFrame::SetAddress(core::ServiceKind service, const std::string& text) {
  CardOf(service).addressText = text;
  ShowAddressOf(CardOf(service));
}

void WelcomeFrame::ShowAddressOf(ServiceCard& card) {
  // The mail server has two. The links of Windows have one line each.
  const std::string& text = card.addressText;
  const std::size_t gap = std::min(text.find("  "), text.size());
  ShowAddress(*card.addresses[0], text.substr(0, gap), addressWidth_);
  ShowAddress(*card.addresses[1], std::string(text::TrimBlanks(std::string_view(text).substr(gap))),
              addressWidth_);
  card.panel->Layout();
}

// Addresses are cut to the cards rather than widening them beyond the window.
void WelcomeFrame::UseWidth() {
  steps_->FitInto(GetClientSize().x - FromDIP(2 * kEdge));
  const int cards = static_cast<int>(cards_.size());
  const int width = (GetClientSize().x - FromDIP(kEdge) * (cards + 1)) / cards - FromDIP(2 * kGap);
  const int next = std::max(width, FromDIP(kAddressWidth));
  if (next == addressWidth_) return;
  addressWidth_ = next;
  for (ServiceCard& card : cards_) ShowAddressOf(card);
}

void WelcomeFrame::SetRunning(core::ServiceKind service, bool running) {
  ServiceCard& card = CardOf(service);
  card.running = running;
  for (wxHyperlinkCtrl* address : card.addresses) address->Enable(running);
  ShowInstead(running ? *card.start : *card.stop, running ? *card.stop : *card.start);
  if (running) {
    ShowState(card, "on", "正在运行", RunningText());
  } else {
    ShowState(card, "off", "已停止", QuietText());
  }
  EnableTogether();
}

void WelcomeFrame::EnableTogether() {
  const auto runs = [](const ServiceCard& each) { return each.running; };
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

void WelcomeFrame::ShowSteps(const StepsLeft& left) {
  if (!steps_->ShowSteps(left)) return;
  UseWidth();
  Layout();
}

void WelcomeFrame::SetReason(core::ServiceKind service, const std::string& text) {
  ServiceCard& card = CardOf(service);
  card.reason->SetLabel(Shown(text));
  card.reason->Show(!text.empty());
  card.panel->Layout();
}

void WelcomeFrame::ShowState(ServiceCard& card, const char* icon, const char* text,
                             const wxColour& colour) {
  card.stateIcon->SetBitmap(Art(icon, kStateSize));
  card.state->SetForegroundColour(colour);
  card.state->SetLabel(Shown(text));
  card.panel->Layout();
}

WelcomeFrame::ServiceCard& WelcomeFrame::CardOf(core::ServiceKind service) {
  return cards_[core::IndexOf(service)];
}

}  // namespace ui
