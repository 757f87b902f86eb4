#include "ui/window/remembered_place.h"

#include <wx/display.h>

#include <algorithm>

#include "settings/user_state.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using settings::Remembered;

const wxSize kFirstSize(900, 720);
constexpr const char* kPlace = "Window";  // the section in window.ini
// Whether the size is one at 100 %. Earlier programs wrote that of the screen.
constexpr const char* kIsScaled = "Scaled";

// Beyond any screen, and far from where sums overflow.
constexpr int kFarthest = 32767;

// As wide and high in letters as at 100 %, where a desktop scales the letters only.
wxSize FirstSize(const wxWindow& window) {
  constexpr int kUsualLetter = 20;
  const int letter = window.ToDIP(window.GetTextExtent(Shown("字"))).y;
  return window.FromDIP(kFirstSize * std::max(letter, kUsualLetter) / kUsualLetter);
}

int NumberOr(const char* key, int otherwise) {
  return std::clamp(Remembered(kPlace, key).value_or(otherwise), -kFarthest, kFarthest);
}

// The screen on which the title bar of the window would be visible, or none.
int ScreenOf(const wxRect& place) {
  for (const int x : {place.x + place.width / 2, place.GetLeft(), place.GetRight()}) {
    const int screen = wxDisplay::GetFromPoint({x, place.y + kGap});
    if (screen != wxNOT_FOUND) return screen;
  }
  return wxNOT_FOUND;
}

int Within(int position, int length, int start, int room) {
  return std::max(start, std::min(position, start + room - length));
}

}  // namespace

// Always written, unlike the corner.
bool RememberedPlace::IsKnown() { return Remembered(kPlace, "Maximized").has_value(); }

void RememberedPlace::Take() {
  const bool isKnown = Remembered(kPlace, "Left") && Remembered(kPlace, "Top");
  const wxPoint corner(NumberOr("Left", 0), NumberOr("Top", 0));
  const wxSize first = FirstSize(window_);
  wxSize size(NumberOr("Width", first.x), NumberOr("Height", first.y));
  if (NumberOr(kIsScaled, 0) != 0) size = window_.FromDIP(size);
  const int screen = isKnown ? ScreenOf(wxRect(corner, size)) : wxNOT_FOUND;
  const wxRect room =
      wxDisplay(screen == wxNOT_FOUND ? 0U : static_cast<unsigned>(screen)).GetClientArea();

  // A window on a small screen scrolls.
  wxSize least = window_.GetMinSize();
  least.DecTo(room.GetSize());
  window_.SetMinSize(least);
  size.IncTo(least);
  size.DecTo(room.GetSize());
  window_.SetSize(size);
  if (screen == wxNOT_FOUND) {
    window_.Move(room.x + (room.width - size.x) / 2, room.y + (room.height - size.y) / 2);
  } else {
    window_.Move(Within(corner.x, size.x, room.x, room.width),
                 Within(corner.y, size.y, room.y, room.height));
  }
  if (Remembered(kPlace, "Maximized").value_or(0) != 0) window_.Maximize();
}

void RememberedPlace::Remember() const {
  if (window_.IsIconized()) return;
  settings::Remember(kPlace, "Maximized", window_.IsMaximized() ? 1 : 0);
  if (window_.IsMaximized()) return;
  const wxPoint corner = window_.GetPosition();
  const wxSize size = window_.ToDIP(window_.GetSize());
  settings::Remember(kPlace, "Left", corner.x);
  settings::Remember(kPlace, "Top", corner.y);
  settings::Remember(kPlace, "Width", size.x);
  settings::Remember(kPlace, "Height", size.y);
  settings::Remember(kPlace, kIsScaled, 1);
}

}  // namespace ui
