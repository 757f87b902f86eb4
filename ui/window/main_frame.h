#pragma once

// A top-level window with a fixed window class, on systems that have one: other programs find a
// running Tarnwerk by the class and the caption of its main window. Mnemonics work wherever the
// focus is in a window, as long as it exists.

#include <wx/frame.h>

namespace ui {

class MainFrame : public wxFrame {
 public:
  explicit MainFrame(const wxString& caption);

 protected:
  /// For close events: whether the user asked for it at the window, and not another program.
  bool IsClosedByUser() const { return closedByUser_; }

 private:
  bool closedByUser_ = true;
};

}  // namespace ui
