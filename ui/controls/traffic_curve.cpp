#include "ui/controls/traffic_curve.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>

#include <algorithm>
#include <array>
#include <memory>
#include <numeric>
#include <vector>

#include "core/service_texts.h"
#include "core/traffic_text.h"
#include "ui/controls/accessible.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using Sample = core::TrafficHistory::Sample;

constexpr int kHeight = 44;
constexpr float kLegendFactor = 0.85F;
constexpr std::uint64_t kLeastTop = 10240;  // bytes per second; less is no mountain

// Those of the services' pictures.
wxColour ColourOf(std::size_t service) {
  const std::array<wxColour, 3> colours = {wxColour(0x2b, 0x7d, 0xd6), wxColour(0xe8, 0x9b, 0x2c),
                                           wxColour(0x2f, 0xa3, 0x6b)};
  return colours.at(service);
}

std::uint64_t SumOf(const Sample& sample) {
  return std::accumulate(sample.begin(), sample.end(), std::uint64_t{0});
}

std::uint64_t TopOf(const std::deque<Sample>& samples) {
  std::uint64_t top = 0;
  for (const Sample& sample : samples) top = std::max(top, SumOf(sample));
  return top;
}

}  // namespace

TrafficCurve::TrafficCurve(wxWindow* parent) : wxWindow(parent, wxID_ANY) {
  Named(this, "picTraffic");
  SetMinSize(FromDIP(wxSize(-1, kHeight)));
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    Refresh();
  });
  ShowSamples({});
}

void TrafficCurve::ShowSamples(const std::deque<Sample>& samples) {
  const bool isFlat = TopOf(samples) == 0 && TopOf(samples_) == 0;
  samples_ = samples;
  const std::string top = "最近五分钟的流量，最高每秒 " + core::ByteText(TopOf(samples_));
  Describe(*this, top, AccessibleRole::kPicture);
  SetToolTip(Shown(top));
  if (!isFlat) Refresh();
}

// At the left, where the oldest part of the curve is.
void TrafficCurve::PaintLegend(wxDC& screen) const {
  screen.SetFont(GetFont().Scaled(kLegendFactor));
  screen.SetTextForeground(QuietText());
  const int height = screen.GetCharHeight();
  wxPoint place(FromDIP(kTightGap), FromDIP(kTightGap));
  for (const core::ServiceKind service : core::kServices) {
    screen.SetPen(*wxTRANSPARENT_PEN);
    screen.SetBrush(wxBrush(ColourOf(core::IndexOf(service))));
    screen.DrawRectangle(place + wxPoint(0, height / 4), {height / 2, height / 2});
    const wxString name = Shown(core::TextsOf(service).name);
    screen.DrawText(name, place + wxPoint(height / 2 + FromDIP(kTightGap), 0));
    place.x += height / 2 + screen.GetTextExtent(name).x + FromDIP(2 * kGap);
  }
}

void TrafficCurve::OnPaint() {
  wxAutoBufferedPaintDC screen(this);
  screen.SetBackground(wxBrush(CardColour()));
  screen.Clear();
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(screen));
  if (!context) return;
  const wxSize room = GetClientSize();
  const auto top = static_cast<double>(std::max(TopOf(samples_), kLeastTop));
  const double step = static_cast<double>(room.x) / (core::TrafficHistory::kMostSamples - 1);
  const double left = room.x - step * static_cast<double>(samples_.size() - 1);
  std::vector<double> ground(samples_.size(), room.y);
  for (std::size_t service = 0; !samples_.empty() && service < core::kServices.size(); ++service) {
    wxGraphicsPath area = context->CreatePath();
    area.MoveToPoint(left, ground.front());
    for (std::size_t i = 1; i < ground.size(); ++i) {
      area.AddLineToPoint(left + step * static_cast<double>(i), ground[i]);
    }
    for (std::size_t i = ground.size(); i-- > 0;) {
      ground[i] -= static_cast<double>(samples_[i][service]) / top * room.y;
      area.AddLineToPoint(left + step * static_cast<double>(i), ground[i]);
    }
    area.CloseSubpath();
    context->SetBrush(wxBrush(ColourOf(service)));
    context->FillPath(area);
  }
  PaintLegend(screen);
  screen.SetPen(wxPen(BorderColour()));
  screen.DrawLine(0, room.y - 1, room.x, room.y - 1);
}

}  // namespace ui
