#pragma once

// The FTP server's options, as they are in memory: callers load them first. What is confirmed takes
// effect when the server next loads its settings.

#include <wx/dialog.h>

#include "ftp/ftp_server.h"
#include "settings/program.h"
#include "ui/dialogs/permission_groups.h"
#include "ui/dialogs/settings_form.h"

class wxButton;
class wxTextCtrl;

namespace ui {

class frmFtpOptions : public wxDialog {
 public:
  frmFtpOptions(wxWindow* parent, const settings::Program& program, ModFtp::FtpServer& server);

  wxTextCtrl* txtFtpAddress;
  wxTextCtrl* txtFtpIP;
  wxTextCtrl* txtFtpPort;
  wxTextCtrl* txtFtpDir;
  wxTextCtrl* txtFtpUploadDir;
  wxButton* cmdBrowser;
  wxButton* cmdBrower2;
  RightsGroup rights;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxSizer* MakeContent();
  void OnConfirm();

  const settings::Program& program_;
  ModFtp::FtpOptions options_;
  SettingsForm form_;
};

}  // namespace ui
