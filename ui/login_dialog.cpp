#include "ui/login_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmPassWord::frmPassWord(wxWindow* parent, const core::Program&)
    : wxDialog(parent, wxID_ANY, Shown("管理员登录")) {}

}  // namespace ui
