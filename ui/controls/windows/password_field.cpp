#include "ui/controls/password_field.h"

#include <wx/msw/wrapwin.h>
#include <wx/textctrl.h>

namespace ui {

// The toolkit does not change this style of an existing field.
void ShowPassword(wxTextCtrl& field, bool shown) {
  constexpr wchar_t kDot = L'\u25CF';
  ::SendMessageW(field.GetHWND(), EM_SETPASSWORDCHAR, shown ? 0 : kDot, 0);
  field.Refresh();
}

}  // namespace ui
