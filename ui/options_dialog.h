#pragma once

// The general options: start with the system, start hidden, start the services, manager password.

#include <wx/dialog.h>

#include "core/program.h"

namespace ui {

class frmOptions : public wxDialog {
 public:
  frmOptions(wxWindow* parent, const core::Program& program);
};

}  // namespace ui
