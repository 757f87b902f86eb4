#include "ui/controls/message_dialog.h"

#include <wx/generic/msgdlgg.h>

namespace ui {

// The message boxes of GTK no longer have icons.
std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* parent, const wxString& text,
                                                       const wxString& title, long style) {
  auto box = std::make_unique<wxGenericMessageDialog>(parent, text, title, style);
  if ((style & wxYES_NO) == wxYES_NO) box->SetEscapeId(wxID_NO);
  return box;
}

}  // namespace ui
