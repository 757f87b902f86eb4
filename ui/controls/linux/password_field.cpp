#include "ui/controls/password_field.h"

#include <wx/textctrl.h>

namespace ui {

void ShowPassword(wxTextCtrl& field, bool shown) {
  const long style = field.GetWindowStyleFlag();
  field.SetWindowStyleFlag(shown ? style & ~wxTE_PASSWORD : style | wxTE_PASSWORD);
}

}  // namespace ui
