#include "ui/options_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmOptions::frmOptions(wxWindow* parent, const core::Program&)
    : wxDialog(parent, wxID_ANY, Shown("系统选项")) {}

}  // namespace ui
