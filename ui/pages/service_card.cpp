#include "ui/pages/service_card.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/hyperlink.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "core/service_addresses.h"
#include "text/strings.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/remedies.h"

namespace ui {
namespace {

constexpr int kPictureSize = 48;
constexpr int kStateSize = 16;
constexpr int kLeastWidth = 180;
constexpr double kTitleFactor = 1.2;
constexpr float kSmall = 0.9F;
constexpr double kAddressFactors[] = {1.15, 1, 0.9};  // the largest that fits is used

constexpr const char* kBeforeStart = "启动以后，这里是\n给别人用的地址";
constexpr const char* kNoNetwork = "没有连接到网络，\n只有这台电脑能打开";
constexpr const char* kWarning = "访客能改动和删除任何文件";
constexpr const char* kWholeWarning =
    "没有设置上传目录，所以任何访客都能上传、改名和删除文件，\n不限于主目录。";

// Every card has the same controls, so the names of theirs contain the service: screen readers and
// tests need to tell them apart.
struct CardNames {
  const char* state;
  const char* reach;
  const char* secondReach;
  const char* reason;
  const char* copy;
  const char* qrCode;
  const char* others;
  const char* remedy;
  const char* address;
  const char* remark;
  const char* start;
  const char* stop;
  const char* page;
  const char* root;
};

constexpr std::array<CardNames, 3> kNames = {{
    {"lblCardWebState", "lblCardWebReach", "lblCardWebReach2", "lblCardWebReason", "cmdCardWebCopy",
     "cmdCardWebQrCode", "cmdCardWebOthers", "cmdCardWebRemedy", "lblCardWebAddress",
     "lblCardWebRemark", "cmdCardStartWeb", "cmdCardStopWeb", "cmdCardWebPage", "cmdCardWebRoot"},
    {"lblCardFtpState", "lblCardFtpReach", "lblCardFtpReach2", "lblCardFtpReason", "cmdCardFtpCopy",
     "cmdCardFtpQrCode", "cmdCardFtpOthers", "cmdCardFtpRemedy", "lblCardFtpAddress",
     "lblCardFtpRemark", "cmdCardStartFtp", "cmdCardStopFtp", "cmdCardFtpPage", "cmdCardFtpRoot"},
    {"lblCardMailState", "lblCardMailReach", "lblCardMailReach2", "lblCardMailReason",
     "cmdCardMailCopy", "cmdCardMailQrCode", "cmdCardMailOthers", "cmdCardMailRemedy",
     "lblCardMailAddress", "lblCardMailRemark", "cmdCardStartMail", "cmdCardStopMail",
     "cmdCardMailPage", "cmdCardMailRoot"},
}};

int HeightOf(const wxWindow& window, const wxFont& font) {
  int width = 0;
  int height = 0;
  window.GetTextExtent(Shown("字"), &width, &height, nullptr, nullptr, &font);
  return height;
}

int WidthOf(const wxWindow& window, const std::string& text, const wxFont& font) {
  int width = 0;
  int height = 0;
  window.GetTextExtent(Shown(text), &width, &height, nullptr, nullptr, &font);
  return width;
}

using Lines = std::array<std::string, 2>;

// The mail server has two addresses.
Lines LinesOf(const std::string& address) {
  const std::size_t gap = std::min(address.find("  "), address.size());
  return {address.substr(0, gap),
          std::string(text::TrimBlanks(std::string_view(address).substr(gap)))};
}

// What is too long for a line even in small letters continues in the next.
Lines Broken(const Lines& lines) {
  const std::size_t scheme = lines[0].find("//");
  if (!lines[1].empty() || scheme == std::string::npos) return lines;
  return {lines[0].substr(0, scheme + 2), lines[0].substr(scheme + 2)};
}

wxStaticText* MakeLine(wxWindow* parent, const char* name) {
  return Named(new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                wxALIGN_CENTRE_HORIZONTAL),
               name);
}

}  // namespace

ServiceCard::ServiceCard(wxWindow* parent, core::ServiceKind service, Actions actions)
    : Card(parent),
      service_(service),
      looks_(LooksOf(service)),
      actions_(std::move(actions)),
      width_(FromDIP(kLeastWidth)) {
  const int edge = FromDIP(kEdge);
  const int gap = FromDIP(kGap);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(MakeHeader(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, edge));
  column->Add(MakeReach(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, gap));
  column->Add(MakeReachButtons(), wxSizerFlags().CentreHorizontal().Border(wxTOP, gap / 2));
  column->Add(MakeOwnAddress(), wxSizerFlags().Expand().Border(wxALL, gap));
  AddButtons(*column);
  if (service == core::ServiceKind::kFtp) AddWarning(*column);
  column->AddSpacer(edge);
  column->SetMinSize(FromDIP(kLeastWidth + 2 * kGap), -1);
  SetSizer(column);
  SetState(ServiceState::kOff);
}

std::function<void()> ServiceCard::Calling(
    std::function<void(core::ServiceKind)> Actions::*action) {
  return [this, action] { (actions_.*action)(service_); };
}

wxSizer* ServiceCard::MakeHeader() {
  stateIcon_ = new wxStaticBitmap(this, wxID_ANY, Art("off", kStateSize));
  state_ = Named(new wxStaticText(this, wxID_ANY, ""), kNames[core::IndexOf(service_)].state);
  auto* state = new wxBoxSizer(wxHORIZONTAL);
  state->Add(stateIcon_, wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kTightGap)));
  state->Add(state_, wxSizerFlags().CentreVertical());
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, looks_.title, kTitleFactor));
  texts->Add(state, wxSizerFlags().Border(wxTOP, FromDIP(kTightGap)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art(looks_.picture, kPictureSize)),
           wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags().CentreVertical());
  row->AddStretchSpacer();
  return row;
}

// As high as two lines, of an address, a hint or a reason.
wxSizer* ServiceCard::MakeReach() {
  const CardNames& names = kNames[core::IndexOf(service_)];
  lines_ = {MakeLine(this, names.reach), MakeLine(this, names.secondReach)};
  reason_ = MakeLine(this, names.reason);
  auto* lines = new wxBoxSizer(wxVERTICAL);
  lines->AddStretchSpacer();
  for (wxStaticText* line : {lines_[0], lines_[1], reason_}) {
    lines->Add(line, wxSizerFlags().CentreHorizontal());
  }
  lines->AddStretchSpacer();
  const wxFont font = GetFont().Bold().Scaled(static_cast<float>(kAddressFactors[0]));
  lines->SetMinSize(-1, 2 * HeightOf(*this, font) + FromDIP(kTightGap));
  return lines;
}

wxSizer* ServiceCard::MakeReachButtons() {
  const CardNames& names = kNames[core::IndexOf(service_)];
  copy_ = MakeSmallButton(this, names.copy, "复制", [this] {
    if (!reachedAt_.empty()) actions_.giveAddress(reachedAt_.front());
  });
  showQrCode_ =
      MakeSmallButton(this, names.qrCode, "二维码...", [this] { actions_.showQrCode(reachedAt_); });
  others_ = MakeSmallButton(this, names.others, "其他", [this] { ShowOtherAddresses(); });
  others_->SetToolTip(Shown("这台电脑的其他地址"));
  remedy_ = MakeSmallButton(this, names.remedy, "", [this] {
    if (diagnosis_) actions_.follow(service_, *diagnosis_);
  });
  Describe(*copy_, std::string("复制给别人的地址 ") + looks_.title);
  Describe(*showQrCode_, std::string("二维码... ") + looks_.title);
  Describe(*others_, std::string("其他地址 ") + looks_.title);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  for (wxButton* button : {copy_, showQrCode_, others_, remedy_}) {
    row->Add(button, wxSizerFlags().Border(wxLEFT, row->IsEmpty() ? 0 : FromDIP(kTightGap)));
  }
  row->Add(0, copy_->GetMinSize().y);  // also while no button is shown
  return row;
}

wxSizer* ServiceCard::MakeOwnAddress() {
  const CardNames& names = kNames[core::IndexOf(service_)];
  ownAddress_ = MakeAddress(this, names.address, Calling(&Actions::openAddress));
  remark_ = MakeLine(this, names.remark);
  remark_->SetForegroundColour(QuietText());
  const wxFont font = GetFont().Scaled(kSmall);
  ownAddress_->SetFont(font);
  remark_->SetFont(font);
  auto* lines = new wxBoxSizer(wxVERTICAL);
  lines->AddStretchSpacer();
  lines->Add(ownAddress_, wxSizerFlags().CentreHorizontal());
  lines->Add(remark_, wxSizerFlags().CentreHorizontal());
  lines->AddStretchSpacer();
  lines->SetMinSize(-1, ownAddress_->GetBestSize().y + HeightOf(*this, font) + FromDIP(kTightGap));
  return lines;
}

void ServiceCard::AddButtons(wxBoxSizer& column) {
  const CardNames& names = kNames[core::IndexOf(service_)];
  start_ = MakeActionButton(this, names.start, "启动", Calling(&Actions::start));
  stop_ = MakeActionButton(this, names.stop, "停止", Calling(&Actions::stop));
  wxButton* page = MakeActionButton(this, names.page, "查看与设置", Calling(&Actions::showPage));
  wxButton* root = MakeActionButton(this, names.root, "打开文件夹", Calling(&Actions::openRoot));
  const wxSizerFlags wide = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kEdge));
  column.Add(start_, wide);
  column.Add(stop_, wide);
  for (wxButton* button : {page, root}) {
    column.AddSpacer(FromDIP(kGap));
    column.Add(button, wide);
  }
  for (wxButton* button : {start_, stop_, page, root}) {
    Describe(*button, Typed(button->GetLabel()) + " " + looks_.title);
  }
}

void ServiceCard::AddWarning(wxBoxSizer& column) {
  warning_ = MakeLine(this, "lblCardFtpWarning");
  warning_->SetForegroundColour(FailedText());
  warning_->SetLabelText(Shown(kWarning));
  warning_->SetToolTip(Shown(kWholeWarning));
  makeUploadFolder_ = MakeActionButton(this, "cmdCardMakeUploadFolder", "建立上传目录",
                                       [this] { actions_.makeUploadFolder(); });
  makeUploadFolder_->SetToolTip(Shown(kWholeWarning));
  Describe(*makeUploadFolder_, std::string("建立上传目录 ") + looks_.title, AccessibleRole::kItsOwn,
           kWholeWarning);
  column.Add(warning_, wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(kGap)));
  column.AddSpacer(FromDIP(kTightGap));
  column.Add(makeUploadFolder_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kEdge)));
  warning_->Hide();
  makeUploadFolder_->Hide();
}

void ServiceCard::SetState(ServiceState state) {
  running_ = state == ServiceState::kOn;
  const bool hasFailed = state == ServiceState::kFailed;
  stateIcon_->SetBitmap(Art(PictureOf(state), kStateSize));
  state_->SetLabel(Shown(running_ ? "正在运行" : hasFailed ? "启动失败" : "已停止"));
  state_->SetForegroundColour(running_ ? RunningText() : hasFailed ? FailedText() : QuietText());
  ownAddress_->Enable(running_);
  ShowInstead(running_ ? *start_ : *stop_, running_ ? *stop_ : *start_);
  ShowReach();
}

void ServiceCard::SetAddress(const std::string& text) {
  address_ = text;
  ShowAddress(*ownAddress_, text, width_);
  Layout();
}

void ServiceCard::SetRemark(const std::string& text) {
  if (Typed(remark_->GetLabelText()) == text) return;
  remark_->SetLabelText(Shown(text));
  Layout();
}

void ServiceCard::SetReach(const std::vector<std::string>& addresses) {
  if (addresses == reachedAt_) return;
  reachedAt_ = addresses;
  ShowReach();
}

void ServiceCard::SetDiagnosis(const std::optional<core::Diagnosis>& diagnosis) {
  diagnosis_ = diagnosis;
  ShowReach();
}

// A reason is more urgent than an address.
void ServiceCard::ShowReach() {
  const bool fails = diagnosis_ && !running_;
  const bool isReached = running_ && !reachedAt_.empty();
  const bool lostFocus =
      copy_->HasFocus() || showQrCode_->HasFocus() || others_->HasFocus() || remedy_->HasFocus();
  reason_->SetLabelText(Shown(fails ? diagnosis_->brief : running_ ? kNoNetwork : kBeforeStart));
  reason_->SetForegroundColour(fails ? FailedText() : QuietText());
  reason_->Show(!isReached);
  copy_->Show(isReached);
  showQrCode_->Show(isReached && core::IsReachedByUrl(service_));
  others_->Show(isReached && reachedAt_.size() > 1);
  const char* remedy = fails ? CaptionOf(diagnosis_->remedy) : "";
  LabelSmallButton(*remedy_, remedy);
  remedy_->Show(*remedy != '\0');
  Describe(*remedy_, std::string(remedy) + " " + looks_.title);
  if (lostFocus) (running_ ? stop_ : start_)->SetFocus();
  ShowLines();
}

void ServiceCard::ShowLines() {
  const bool isReached = running_ && !reachedAt_.empty();
  Lines texts = LinesOf(isReached ? reachedAt_.front() : "");
  wxFont font;
  const auto fits = [&] {
    return std::all_of(texts.begin(), texts.end(), [&](const std::string& text) {
      return WidthOf(*this, text, font) <= width_;
    });
  };
  for (const double factor : kAddressFactors) {
    font = GetFont().Bold().Scaled(static_cast<float>(factor));
    if (fits()) break;
  }
  if (!fits()) texts = Broken(texts);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    lines_[i]->SetFont(font);
    lines_[i]->SetLabelText(Shown(texts[i]));
    lines_[i]->SetToolTip(Shown(texts[i]));
    lines_[i]->Show(!texts[i].empty());
  }
  Layout();
}

// A menu, since choosing one copies it.
void ServiceCard::ShowOtherAddresses() {
  wxMenu menu;
  const std::vector<std::string> addresses = reachedAt_;
  for (std::size_t i = 1; i < addresses.size(); ++i) {
    const int item = menu.Append(wxID_ANY, Shown("复制 " + addresses[i]))->GetId();
    menu.Bind(
        wxEVT_MENU,
        [this, address = addresses[i]](wxCommandEvent&) { actions_.giveAddress(address); }, item);
  }
  others_->PopupMenu(&menu, 0, others_->GetSize().y);
}

bool ServiceCard::WarnOfChanges(bool warned) {
  if (warning_ == nullptr || warning_->IsShown() == warned) return false;
  if (makeUploadFolder_->HasFocus()) (running_ ? stop_ : start_)->SetFocus();
  warning_->Show(warned);
  makeUploadFolder_->Show(warned);
  Layout();
  return true;
}

void ServiceCard::UseWidth(int width) {
  const int next = std::max(width, FromDIP(kLeastWidth));
  if (next == width_) return;
  width_ = next;
  ShowAddress(*ownAddress_, address_, width_);
  ShowLines();
}

}  // namespace ui
