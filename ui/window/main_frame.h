#pragma once

// A top-level window with a fixed window class, on systems that have one: other programs find a
// running Tarnwerk by the class and the caption of its main window. The mnemonics of buttons work
// wherever the focus is in the window.

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
