#pragma once

// The tip of the day, from TIPOFDAY.TXT in the program directory: a tip per line, empty lines and
// those that begin with "#" left out,
// of a long one its beginning. Each start shows the next one, until the user turns it off;
// without that file there are no tips. The box stands beside the window and waits for nobody.

#include <wx/dialog.h>

#include <string>
#include <vector>

#include "settings/program.h"

class wxCheckBox;
class wxStaticText;

namespace ui {

class frmTip : public wxDialog {
 public:
  /// For the start of the program.
  static void ShowUnlessTurnedOff(wxWindow* parent, const settings::Program& program);

  /// For who asks for it. False if there is none.
  static bool ShowNext(wxWindow* parent, const settings::Program& program);

  /// Closes it if it is open.
  static void Leave(wxWindow* parent);

  static std::vector<std::string> ReadTips(const settings::Program& program);

 private:
  frmTip(wxWindow* parent, std::vector<std::string> tips);

  void ShowTip();
  void End();

  std::vector<std::string> tips_;
  wxStaticText* lblTip_;
  wxCheckBox* chkShowTips_;
};

}  // namespace ui
