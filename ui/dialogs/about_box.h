#pragma once

// Says what this program is, and which one exactly.

#include <wx/dialog.h>

namespace ui {

class frmAbout : public wxDialog {
 public:
  explicit frmAbout(wxWindow* parent);
};

}  // namespace ui
