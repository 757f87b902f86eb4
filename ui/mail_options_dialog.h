#pragma once

// The mail server's options. Opening it loads the settings anew. Confirming it takes over the mail
// root at once; ports and domain take effect when the settings are loaded next.

#include <wx/dialog.h>

#include "core/program.h"
#include "mail/mail_server.h"

namespace ui {

class frmMailOptions : public wxDialog {
 public:
  frmMailOptions(wxWindow* parent, const core::Program& program, ModMail::MailServer& server);
};

}  // namespace ui
