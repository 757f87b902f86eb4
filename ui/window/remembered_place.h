#pragma once

// Where the main window is on the screen, from one run of the program to the next (window.ini).

#include <wx/toplevel.h>

namespace ui {

class RememberedPlace {
 public:
  /// The window outlives this object.
  explicit RememberedPlace(wxTopLevelWindow& window) : window_(window) {}

  /// Puts the window where it was last, at least in its minimum size; in the middle of the screen
  /// if there is no such place or no screen is there any more.
  void Take();

  /// Does nothing while the window is minimised.
  void Remember() const;

 private:
  wxTopLevelWindow& window_;
};

}  // namespace ui
