#pragma once

// The mail server's options. Opening it loads the settings anew. Confirming it takes over the mail
// root at once; ports and domain take effect when the settings are loaded next.

#include <wx/dialog.h>

#include "mail/mail_options_entry.h"
#include "mail/mail_server.h"
#include "settings/program.h"
#include "ui/controls/log_panel.h"

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
  void Load(const ModMail::MailOptionsEntry& entry);
  ModMail::MailOptionsEntry Entry() const;
  void OnConfirm();
  void Refuse(ModMail::MailOptionsFault fault);

  const settings::Program& program_;
  ModMail::MailServer& server_;
  wxBookCtrlBase* pages_;
};

}  // namespace ui
