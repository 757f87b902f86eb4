#pragma once

// The general options: start with the system, start hidden, start the services, manager password.

#include <wx/dialog.h>

#include "settings/program.h"
#include "settings/start_options.h"
#include "ui/dialogs/settings_form.h"

class wxButton;
class wxCheckBox;
class wxTextCtrl;

namespace ui {

class frmOptions : public wxDialog {
 public:
  frmOptions(wxWindow* parent, const settings::Program& program);

  wxCheckBox* chkSysAutoStart;
  wxCheckBox* chkShowInBar;
  wxCheckBox* chkAutoStartService;
  wxCheckBox* chkNotices;
  wxCheckBox* chkManagerPwd;
  wxTextCtrl* txtPwd;
  wxCheckBox* chkShowPwd;  // shows what is typed: a slip would lock the user out
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxSizer* MakeContent();
  void Load();
  void EnablePassword();
  void KeepPasswordFitting();
  void OnConfirm();

  const settings::Program& program_;
  settings::StartOptions options_;
  SettingsForm form_;
};

}  // namespace ui
