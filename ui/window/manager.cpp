#include "ui/window/manager.h"

#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/textctrl.h>

#include "ftp/ftp_server.h"
#include "mail/mail_server.h"
#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/port_field.h"
#include "ui/dialogs/web_options_dialog.h"

namespace ui {

bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service,
                   std::optional<int> wrongPort) {
  switch (service) {
    case core::ServiceKind::kWeb: {
      frmWebOptions dialog(parent, manager.program, manager.web);
      if (wrongPort) SelectPort({dialog.txtWebPort}, *wrongPort);
      return dialog.ShowModal() == wxID_OK;
    }
    case core::ServiceKind::kFtp: {
      frmFtpOptions dialog(parent, manager.program, manager.ftp);
      if (wrongPort) SelectPort({dialog.txtFtpPort}, *wrongPort);
      return dialog.ShowModal() == wxID_OK;
    }
    case core::ServiceKind::kMail:
      break;
  }
  frmMailOptions dialog(parent, manager.program, manager.mail);
  if (wrongPort) SelectPort({dialog.txtSMTPPort, dialog.txtPop3Port}, *wrongPort);
  return dialog.ShowModal() == wxID_OK;
}

bool AskForAnswers(wxWindow* parent, const Manager& manager) {
  frmWebOptions dialog(parent, manager.program, manager.web);
  dialog.answers->chkAnswersHttp->SetFocus();
  dialog.txtWebRoot->SelectNone();  // it had the focus
  return dialog.ShowModal() == wxID_OK;
}

}  // namespace ui
