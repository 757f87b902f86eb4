#include "ui/window/manager.h"

#include "ui/dialogs/ftp_options_dialog.h"
#include "ui/dialogs/mail_options_dialog.h"
#include "ui/dialogs/web_options_dialog.h"

namespace ui {

bool AskForOptions(wxWindow* parent, const Manager& manager, core::ServiceKind service) {
  switch (service) {
    case core::ServiceKind::kWeb:
      return frmWebOptions(parent, manager.program, manager.web).ShowModal() == wxID_OK;
    case core::ServiceKind::kFtp:
      return frmFtpOptions(parent, manager.program, manager.ftp).ShowModal() == wxID_OK;
    case core::ServiceKind::kMail:
      break;
  }
  return frmMailOptions(parent, manager.program, manager.mail).ShowModal() == wxID_OK;
}

}  // namespace ui
