#include "ui/controls/colours.h"

#include <wx/settings.h>

namespace ui {
namespace {

wxColour WindowColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE); }
wxColour TextColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT); }

unsigned char MixedChannel(unsigned char first, unsigned char second, double share) {
  return static_cast<unsigned char>(first * share + second * (1 - share) + 0.5);
}

}  // namespace

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

wxColour QuietText() { return Mixed(TextColour(), WindowColour(), 0.65); }

wxColour RunningText() {
  return IsDark() ? wxColour(0x6f, 0xdb, 0x9a) : wxColour(0x14, 0x76, 0x3f);
}

wxColour FailedText() { return IsDark() ? wxColour(0xff, 0x8f, 0x8f) : wxColour(0xb4, 0x24, 0x24); }

wxColour AccentColour() { return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT); }

}  // namespace ui
