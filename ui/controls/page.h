#pragma once

// A page of the main window. If it is larger than the window, it scrolls, and follows the focus.

#include <wx/scrolwin.h>

namespace ui {

class Page : public wxScrolledWindow {
 public:
  explicit Page(wxWindow* parent);

  /// The size at which nothing scrolls.
  wxSize WholeSize();

  /// Also adapts the scrolled area to the content.
  bool Layout() override;

 private:
  wxSize whole_;
};

}  // namespace ui
