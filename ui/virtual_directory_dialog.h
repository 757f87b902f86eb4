#pragma once

// The one virtual directory. It is stored, and no request asks for it.

#include <wx/dialog.h>

#include "core/program.h"

namespace ui {

class frmEditDir : public wxDialog {
 public:
  frmEditDir(wxWindow* parent, const core::Program& program);
};

}  // namespace ui
