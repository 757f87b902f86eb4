#pragma once

// Asks for the manager password, as often as the user likes, and closes by itself after a minute.

#include <wx/dialog.h>
#include <wx/timer.h>

#include "settings/program.h"

class wxButton;
class wxStaticText;
class wxTextCtrl;

namespace ui {

class frmPassWord : public wxDialog {
 public:
  frmPassWord(wxWindow* parent, const settings::Program& program);

  int ShowModal() override;

  /// Whether the last attempt in this dialog was right. Leaving it otherwise does not change that.
  bool LoginOK() const { return loginOk_; }

  wxTextCtrl* txtPwd;
  wxStaticText* lblMsg;
  wxButton* cmdOK;
  wxButton* cmdCancel;
  wxTimer Timer1;

 private:
  wxSizer* MakeContent();
  void OnConfirm();

  const settings::Program& program_;
  bool loginOk_ = false;
};

}  // namespace ui
