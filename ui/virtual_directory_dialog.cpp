#include "ui/virtual_directory_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmEditDir::frmEditDir(wxWindow* parent, const core::Program&)
    : wxDialog(parent, wxID_ANY, Shown("添加虚拟目录")) {}

}  // namespace ui
