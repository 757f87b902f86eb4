#pragma once

// The one virtual directory. It is stored, and no request asks for it.

#include <wx/dialog.h>

#include "core/program.h"
#include "ui/option_pair.h"

class wxButton;
class wxCheckBox;
class wxRadioButton;
class wxTextCtrl;

namespace ui {

class frmEditDir : public wxDialog {
 public:
  frmEditDir(wxWindow* parent, const core::Program& program);

  wxTextCtrl* txtDir;
  wxButton* cmdBrowser;
  wxRadioButton* OptNoApp;
  wxRadioButton* OptAppDone;
  wxCheckBox* chkRead;
  wxCheckBox* chkWrite;
  wxCheckBox* chkContralAll;
  wxButton* cmdOK;
  wxButton* cmdCancel;

 private:
  wxSizer* MakeContent();
  void Load();
  void OnBrowse();
  void OnConfirm();

  const core::Program& program_;
  OptionPair programs_;
};

}  // namespace ui
