#include "ui/controls/message_box.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/toolkit_text.h"

namespace ui {

int ShowMessage(wxWindow* parent, const std::string& text, const char* title, long style) {
  const auto box = MakeMessageDialog(parent, Shown(text), Shown(title), style);
  if ((style & wxYES_NO) != 0) {
    box->SetYesNoLabels(Shown("是(&Y)"), Shown("否(&N)"));
  } else {
    box->SetOKLabel(Shown("确定"));
  }
  return box->ShowModal();
}

void Warn(wxWindow* parent, const std::string& text, const char* title) {
  ShowMessage(parent, text, title, wxOK | wxICON_EXCLAMATION);
}

bool Confirm(wxWindow* parent, const std::string& text, const char* title) {
  return ShowMessage(parent, text, title, wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION) == wxID_YES;
}

}  // namespace ui
