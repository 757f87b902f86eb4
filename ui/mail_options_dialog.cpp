#include "ui/mail_options_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmMailOptions::frmMailOptions(wxWindow* parent, const core::Program&, ModMail::MailServer&)
    : wxDialog(parent, wxID_ANY, Shown("E-Mail服务器选项")) {}

}  // namespace ui
