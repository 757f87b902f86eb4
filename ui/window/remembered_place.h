#pragma once

// The position and size of the main window, kept in window.ini between runs of the program.

#include <wx/toplevel.h>

namespace ui {

class RememberedPlace {
 public:
  /// The window must outlive this object.
  explicit RememberedPlace(wxTopLevelWindow& window) : window_(window) {}

  /// Restores the last position and size, at least the minimum size. Centres the window if there is
  /// none or its screen is gone.
  void Take();

  /// Whether there is one, which is not so at the first start.
  static bool IsKnown();

  /// Saves them. Does nothing while the window is minimised.
  void Remember() const;

 private:
  wxTopLevelWindow& window_;
};

}  // namespace ui
