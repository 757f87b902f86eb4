#pragma once

// A top-level window of a given window class, where the system has such: other programs find a
// running Tarnwerk by the class and the caption of its main window. The keys that buttons are
// marked with work all over the window, wherever in it the focus is.

#include <wx/frame.h>

namespace ui {

class MainFrame : public wxFrame {
 public:
  explicit MainFrame(const wxString& caption);
};

}  // namespace ui
