#include "ui/window/notice.h"

#include <wx/notifmsg.h>

#include "ui/controls/toolkit_text.h"

namespace ui {

void ShowNotice(wxWindow& window, const std::string& title, const std::string& text) {
  wxNotificationMessage notice(Shown(title), Shown(text), &window, wxICON_INFORMATION);
  notice.Show();
}

}  // namespace ui
