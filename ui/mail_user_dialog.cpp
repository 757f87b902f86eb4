#include "ui/mail_user_dialog.h"

#include <wx/textctrl.h>

#include "ui/toolkit_text.h"

namespace ui {

frmEmailUsers::frmEmailUsers(wxWindow* parent, const core::Program&, ModMail::MailServer&)
    : wxDialog(parent, wxID_ANY, Shown("添加用户")) {
  txtUser = new wxTextCtrl(this, wxID_ANY);
  txtPass = new wxTextCtrl(this, wxID_ANY);
}

}  // namespace ui
