#pragma once

// The one virtual directory. It is stored, and no request asks for it.

#include <wx/dialog.h>

#include "settings/program.h"
#include "ui/dialogs/permission_groups.h"

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
  void Load();
  void OnConfirm();

  const settings::Program& program_;
};

}  // namespace ui
