#pragma once

// The FTP server's options, filled from the settings in memory: who opens it has them loaded
// before. A running server takes over what is confirmed here when it loads its settings next.

#include <wx/dialog.h>

#include "ftp/ftp_options_entry.h"
#include "ftp/ftp_server.h"
#include "settings/program.h"
#include "ui/dialogs/permission_groups.h"

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
  void Load(const ModFtp::FtpOptionsEntry& entry);
  ModFtp::FtpOptionsEntry Entry() const;
  void OnConfirm();
  void Refuse(ModFtp::FtpOptionsFault fault);

  const settings::Program& program_;
};

}  // namespace ui
