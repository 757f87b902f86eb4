#include "ui/controls/colours.h"

#include <wx/settings.h>

#include <algorithm>
#include <cmath>

namespace ui {
namespace {

wxColour WindowColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE); }
wxColour TextColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT); }

unsigned char MixedChannel(unsigned char first, unsigned char second, double share) {
  return static_cast<unsigned char>(std::lround(first * share + second * (1 - share)));
}

// The luminance that eyes perceive, from 0 to 1.
double Luminance(const wxColour& colour) {
  const auto linear = [](unsigned char channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.Red()) + 0.7152 * linear(colour.Green()) +
         0.0722 * linear(colour.Blue());
}

// On the window and on cards, of which the one nearer to the text's lightness counts.
wxColour ReadableOnPages(const wxColour& text) {
  return Readable(text, IsDark() ? CardColour() : SideBarColour());
}

}  // namespace

double Contrast(const wxColour& first, const wxColour& second) {
  const auto [darker, lighter] = std::minmax({Luminance(first), Luminance(second)});
  return (lighter + 0.05) / (darker + 0.05);
}

wxColour Readable(const wxColour& text, const wxColour& ground) {
  constexpr double kStep = 0.05;
  const bool lighter = Contrast(*wxWHITE, ground) > Contrast(*wxBLACK, ground);
  wxColour readable = text;
  for (double share = kStep; share < 1 && Contrast(readable, ground) < kLeastContrast;
       share += kStep) {
    readable = Mixed(lighter ? *wxWHITE : *wxBLACK, text, share);
  }
  return readable;
}

wxColour Mixed(const wxColour& first, const wxColour& second, double share) {
  return {MixedChannel(first.Red(), second.Red(), share),
          MixedChannel(first.Green(), second.Green(), share),
          MixedChannel(first.Blue(), second.Blue(), share)};
}

bool IsDark() { return WindowColour().GetLuminance() < TextColour().GetLuminance(); }

wxColour CardColour() {
  return IsDark() ? Mixed(*wxWHITE, WindowColour(), 0.06) : Mixed(*wxWHITE, WindowColour(), 0.85);
}

wxColour BorderColour() { return Mixed(TextColour(), WindowColour(), 0.18); }

wxColour SideBarColour() { return Mixed(TextColour(), WindowColour(), 0.05); }

wxColour QuietText() { return ReadableOnPages(Mixed(TextColour(), WindowColour(), 0.65)); }

wxColour LinkText() { return ReadableOnPages(wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT)); }

wxColour RunningText() {
  return IsDark() ? wxColour(0x6f, 0xdb, 0x9a) : wxColour(0x14, 0x76, 0x3f);
}

wxColour FailedText() { return IsDark() ? wxColour(0xff, 0x8f, 0x8f) : wxColour(0xb4, 0x24, 0x24); }

wxColour AccentColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT); }

}  // namespace ui
