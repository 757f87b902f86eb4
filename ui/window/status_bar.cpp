#include "ui/window/status_bar.h"

#include <wx/statbmp.h>

#include <algorithm>

#include "core/service_texts.h"
#include "core/traffic_text.h"
#include "platform/text_case.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/service_looks.h"

namespace ui {
namespace {

constexpr int kPictureSize = 16;
constexpr int kPictureWidth = 26;
constexpr int kTextWidth = 110;  // minimum
constexpr const char* kLongestText = "Mail服务：OFF";
constexpr const char* kLongestTraffic = "接收 999.9 KB/s  发送 999.9 KB/s";

// Each panel is two of the toolkit's fields, since a field shows either text or a picture well.
int PictureField(core::ServiceKind service) { return 2 * static_cast<int>(service); }
int TextField(core::ServiceKind service) { return PictureField(service) + 1; }
constexpr int kRemarkField = 6;
constexpr int kTrafficField = 7;
constexpr int kTrafficWidth = 210;  // minimum
constexpr int kRemarkTime = 8000;   // milliseconds

std::string BothWays(const net::Traffic& traffic, const char* per) {
  return "接收 " + core::ByteText(traffic.received) + per + "  发送 " +
         core::ByteText(traffic.sent) + per;
}

}  // namespace

StatusBar::StatusBar(wxWindow* parent)
    : wxStatusBar(parent, wxID_ANY, wxSTB_SIZEGRIP | wxSTB_ELLIPSIZE_END) {
  Named(this, "stbInfo");
  const int picture = FromDIP(kPictureWidth);
  // The font may be large compared to the rest.
  const auto widthOf = [this](const char* longest, int least) {
    return std::max(FromDIP(least), GetTextExtent(Shown(longest)).x + FromDIP(kEdge));
  };
  const int text = widthOf(kLongestText, kTextWidth);
  const int traffic = widthOf(kLongestTraffic, kTrafficWidth);
  widths_ = {picture, text, picture, text, picture, text, -1, traffic};
  std::array<int, std::tuple_size_v<decltype(widths_)>> styles;
  styles.fill(wxSB_FLAT);
  SetFieldsCount(static_cast<int>(widths_.size()), widths_.data());
  SetStatusStyles(static_cast<int>(styles.size()), styles.data());
  SetMinHeight(FromDIP(kPictureSize) + FromDIP(kTightGap));
  for (wxStaticBitmap*& each : pictures_) {
    each = new wxStaticBitmap(this, wxID_ANY, Art("off", kPictureSize));
  }
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    PlacePictures();
    event.Skip();
  });
  remark_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    SetStatusText("", kRemarkField);
    ShowWidths(true);
  });
}

void StatusBar::UpdateServiceStatus(std::string_view state, const std::string& text,
                                    std::string_view service) {
  const bool on = platform::EqualIgnoringCase(state, "ON");
  for (const core::ServiceKind each : core::kServices) {
    if (platform::EqualIgnoringCase(service, core::TextsOf(each).name)) SetPanel(each, on, text);
  }
}

void StatusBar::SetPanel(core::ServiceKind service, bool on, const std::string& text) {
  on_[core::IndexOf(service)] = on;
  pictures_[core::IndexOf(service)]->SetBitmap(
      Art(PictureOf(on ? ServiceState::kOn : ServiceState::kOff), kPictureSize));
  SetStatusText(Shown(text), TextField(service));
  std::string all;
  for (const core::ServiceKind each : core::kServices) all += PanelText(each) + " ";
  Describe(*this, all, AccessibleRole::kStatusBar);
}

void StatusBar::MarkFailed(core::ServiceKind service) {
  pictures_[core::IndexOf(service)]->SetBitmap(Art(PictureOf(ServiceState::kFailed), kPictureSize));
}

std::string StatusBar::PanelText(core::ServiceKind service) const {
  return Typed(GetStatusText(TextField(service)));
}

void StatusBar::ShowTraffic(const net::Traffic& rate, const net::Traffic& total) {
  const wxString text = Shown(BothWays(rate, "/s"));
  if (GetStatusText(kTrafficField) != text) SetStatusText(text, kTrafficField);
  const wxString tip = Shown("启动以来共" + BothWays(total, ""));
  if (GetToolTipText() != tip) SetToolTip(tip);
}

void StatusBar::ShowNoTraffic() {
  if (GetStatusText(kTrafficField).empty()) return;
  SetStatusText("", kTrafficField);
  UnsetToolTip();
}

std::string StatusBar::TrafficText() const { return Typed(GetStatusText(kTrafficField)); }

void StatusBar::Remark(const std::string& text) {
  ShowWidths(true);
  SetStatusText(Shown(text), kRemarkField);
  wxRect field;
  GetFieldRect(kRemarkField, field);
  if (GetTextExtent(Shown(text)).x + FromDIP(kEdge) > field.width) ShowWidths(false);
  remark_.StartOnce(kRemarkTime);
}

void StatusBar::ShowWidths(bool withTraffic) {
  std::array<int, std::tuple_size_v<decltype(widths_)>> widths = widths_;
  if (!withTraffic) widths[kTrafficField] = 0;
  SetStatusWidths(static_cast<int>(widths.size()), widths.data());
}

void StatusBar::PlacePictures() {
  for (const core::ServiceKind service : core::kServices) {
    wxRect field;
    GetFieldRect(PictureField(service), field);
    wxStaticBitmap* picture = pictures_[core::IndexOf(service)];
    const wxSize size = picture->GetSize();
    picture->Move(field.GetRight() - size.GetWidth() + 1,
                  field.y + (field.height - size.GetHeight()) / 2 + FromDIP(1));
  }
}

}  // namespace ui
