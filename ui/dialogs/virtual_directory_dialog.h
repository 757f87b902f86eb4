#pragma once

// The one virtual directory. It is stored; no request uses it.

#include <wx/dialog.h>

#include "settings/program.h"
#include "ui/dialogs/permission_groups.h"
#include "ui/dialogs/settings_form.h"
#include "web/virtual_directory.h"

class wxButton;
class wxTextCtrl;

namespace ui {

class frmEditDir : public wxDialog {
 public:
  frmEditDir(wxWindow* parent, const settings::Program& program);

  wxTextCtrl* txtDir;
  wxButton* cmdBrowser;
  ProgramsGroup programs;
  RightsGroup rights;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxSizer* MakeContent();
  void OnConfirm();

  const settings::Program& program_;
  ModWeb::VirtualDirectory directory_;
  SettingsForm form_;
};

}  // namespace ui
