#include "ui/window/remembered_place.h"

#include <wx/display.h>

#include "settings/user_state.h"
#include "ui/controls/layout.h"

namespace ui {
namespace {

using settings::Remembered;

const wxSize kFirstSize(860, 640);
constexpr const char* kPlace = "Window";  // the section in window.ini

}  // namespace

void RememberedPlace::Take() {
  const wxSize first = window_.FromDIP(kFirstSize);
  wxSize size(Remembered(kPlace, "Width").value_or(first.x),
              Remembered(kPlace, "Height").value_or(first.y));
  size.IncTo(window_.GetMinSize());
  window_.SetSize(size);
  const auto left = Remembered(kPlace, "Left");
  const auto top = Remembered(kPlace, "Top");
  const wxPoint grip = wxPoint(left.value_or(0) + size.x / 2, top.value_or(0) + kGap);
  if (left && top && wxDisplay::GetFromPoint(grip) != wxNOT_FOUND) {
    window_.Move(*left, *top);
  } else {
    window_.Centre(wxBOTH);
  }
  if (Remembered(kPlace, "Maximized").value_or(0) != 0) window_.Maximize();
}

void RememberedPlace::Remember() const {
  if (window_.IsIconized()) return;
  settings::Remember(kPlace, "Maximized", window_.IsMaximized() ? 1 : 0);
  if (window_.IsMaximized()) return;
  const wxRect place = window_.GetRect();
  settings::Remember(kPlace, "Left", place.x);
  settings::Remember(kPlace, "Top", place.y);
  settings::Remember(kPlace, "Width", place.width);
  settings::Remember(kPlace, "Height", place.height);
}

}  // namespace ui
