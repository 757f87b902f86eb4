#pragma once

// The FTP server's options, filled from the settings in memory: who opens it has them loaded
// before. A running server takes over what is confirmed here when it loads its settings next.

#include <wx/dialog.h>

#include "core/program.h"
#include "ftp/ftp_server.h"

namespace ui {

class frmFtpOptions : public wxDialog {
 public:
  frmFtpOptions(wxWindow* parent, const core::Program& program, ModFtp::FtpServer& server);
};

}  // namespace ui
