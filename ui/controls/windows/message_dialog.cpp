#include "ui/controls/message_dialog.h"

namespace ui {

std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* parent, const wxString& text,
                                                       const wxString& title, long style) {
  return std::make_unique<wxMessageDialog>(parent, text, title, style);
}

}  // namespace ui
