#pragma once

// The Web server's options. Opening it loads the settings anew; confirming it writes IndexFN.Log
// and Server.ini, which take effect when the server next loads its settings. The list of default
// documents replaces the one in memory, so that none past its end comes back. How the server
// answers is written only if it was changed.

#include <wx/dialog.h>

#include <memory>

#include "settings/program.h"
#include "ui/controls/log_panel.h"
#include "ui/dialogs/answer_fields.h"
#include "ui/dialogs/document_list.h"
#include "ui/dialogs/permission_groups.h"
#include "ui/dialogs/settings_form.h"
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
  std::unique_ptr<AnswerFields> answers;
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
  void OnConfirm();

  const settings::Program& program_;
  ModWeb::WebServer& server_;
  ModWeb::WebOptions options_;
  SettingsForm form_;
  wxBookCtrlBase* pages_;
  DocumentList* documents_;
};

}  // namespace ui
