#pragma once

// A panel with its own background and a thin border.

#include <wx/panel.h>

namespace ui {

class Card : public wxPanel {
 public:
  explicit Card(wxWindow* parent);

 private:
  void OnPaint();
};

}  // namespace ui
