#pragma once

// The mail server's options. Opening it loads the settings anew. Confirming it takes over the mail
// root at once; ports and domain take effect when the settings are loaded next.

#include <wx/dialog.h>

#include "mail/mail_server.h"
#include "settings/program.h"
#include "ui/controls/log_panel.h"
#include "ui/dialogs/settings_form.h"

class wxBookCtrlBase;
class wxButton;
class wxTextCtrl;

namespace ui {

class frmMailOptions : public wxDialog {
 public:
  frmMailOptions(wxWindow* parent, const settings::Program& program, ModMail::MailServer& server);

  wxTextCtrl* txtMailIP;
  wxTextCtrl* txtSMTPPort;
  wxTextCtrl* txtPop3Port;
  wxTextCtrl* txtMailAddress;
  wxTextCtrl* txtMailRootDir;
  wxButton* cmdBrowser;
  LogList* lstLog;
  wxButton* cmdClearLog;
  wxButton* cmdExportLog;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxWindow* MakeServerPage();
  void OnConfirm();

  const settings::Program& program_;
  ModMail::MailServer& server_;
  ModMail::MailOptions options_;
  SettingsForm form_;
  wxBookCtrlBase* pages_;
};

}  // namespace ui
