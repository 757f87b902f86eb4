#pragma once

// A surface set off from the window's, with a thin line round it.

#include <wx/panel.h>

namespace ui {

class Card : public wxPanel {
 public:
  explicit Card(wxWindow* parent);

 private:
  void OnPaint();
};

}  // namespace ui
