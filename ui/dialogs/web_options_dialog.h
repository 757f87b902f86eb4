#pragma once

// The Web server's options. Opening it loads the settings anew; confirming it writes IndexFN.Log
// and Server.ini, which a running server takes over when it loads its settings next.

#include <wx/dialog.h>

#include "settings/program.h"
#include "ui/controls/log_panel.h"
#include "ui/dialogs/document_list.h"
#include "ui/dialogs/permission_groups.h"
#include "web/web_options_entry.h"
#include "web/web_server.h"

class wxBookCtrlBase;
class wxCheckBox;
class wxTextCtrl;

namespace ui {

class frmWebOptions : public wxDialog {
 public:
  frmWebOptions(wxWindow* parent, const settings::Program& program, ModWeb::WebServer& server);

  wxTextCtrl* txtWebRoot;
  wxTextCtrl* txtWebIP;
  wxTextCtrl* txtWebPort;
  wxTextCtrl* txtWebAddress;
  wxButton* cmdBrowser;
  wxCheckBox* chkDefaultFile;
  wxListBox* lstDocument;
  RightsGroup rights;
  ProgramsGroup programs;
  LogList* lstLog;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxWindow* MakeSitePage();
  wxWindow* MakeDocumentPage();
  wxWindow* MakeRightsPage();
  void Load(const ModWeb::WebOptionsEntry& entry);
  ModWeb::WebOptionsEntry Entry() const;
  void OnConfirm();
  void Refuse(ModWeb::WebOptionsFault fault);

  const settings::Program& program_;
  wxBookCtrlBase* pages_;
  DocumentList* documents_;
};

}  // namespace ui
