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
  const int widths[] = {picture, text, picture, text, picture, text, -1, traffic};
  const int styles[] = {wxSB_FLAT, wxSB_FLAT, wxSB_FLAT, wxSB_FLAT,
                        wxSB_FLAT, wxSB_FLAT, wxSB_FLAT, wxSB_FLAT};
  SetFieldsCount(std::size(widths), widths);
  SetStatusStyles(std::size(styles), styles);
  SetMinHeight(FromDIP(kPictureSize) + FromDIP(kTightGap));
  for (wxStaticBitmap*& each : pictures_) {
    each = new wxStaticBitmap(this, wxID_ANY, Art("off", kPictureSize));
  }
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    PlacePictures();
    event.Skip();
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
  pictures_[core::IndexOf(service)]->SetBitmap(Art(on ? "on" : "off", kPictureSize));
  SetStatusText(Shown(text), TextField(service));
  std::string all;
  for (const core::ServiceKind each : core::kServices) all += PanelText(each) + " ";
  Describe(*this, all, AccessibleRole::kStatusBar);
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

void StatusBar::Remark(const std::string& text) { SetStatusText(Shown(text), kRemarkField); }

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
