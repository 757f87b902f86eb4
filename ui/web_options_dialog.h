#pragma once

// The Web server's options. Opening it loads the settings anew; confirming it writes Server.ini and
// IndexFN.Log, which a running server takes over when it loads its settings next.

#include <wx/dialog.h>

#include "core/program.h"
#include "web/web_server.h"

namespace ui {

class frmWebOptions : public wxDialog {
 public:
  frmWebOptions(wxWindow* parent, const core::Program& program, ModWeb::WebServer& server);
};

}  // namespace ui
