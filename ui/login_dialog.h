#pragma once

// Asks for the manager password, as often as the user likes, and closes by itself after a minute.

#include <wx/dialog.h>

#include "core/program.h"

namespace ui {

class frmPassWord : public wxDialog {
 public:
  frmPassWord(wxWindow* parent, const core::Program& program);

  /// Whether the last attempt in this dialog was right. Leaving it otherwise does not change that.
  bool LoginOK() const { return loginOk_; }

 private:
  bool loginOk_ = false;
};

}  // namespace ui
