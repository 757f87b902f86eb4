#pragma once

// A page of the main window. It lies in a scrolling window, so that all of it can be reached where
// the window is smaller, and the focus is followed.

#include <wx/panel.h>

namespace ui {

class Page : public wxPanel {
 public:
  explicit Page(wxWindow* parent);

  /// To be laid out in place of this page, which fills it or is larger.
  wxWindow& Frame() { return *GetParent(); }

  /// The size of what can be seen at once.
  wxSize Room() const { return GetParent()->GetClientSize(); }

  /// The size at which nothing scrolls.
  wxSize WholeSize();

  bool Show(bool show = true) override;

  /// Also adapts the scrolled area to the content.
  bool Layout() override;

 private:
  wxSize whole_;
};

}  // namespace ui
