#include "platform/control_looks.h"

#include <windows.h>

namespace platform {

void ShowAsMainButton(void* button) {
  SendMessageW(static_cast<HWND>(button), BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

bool MakeSelectable(void*) { return false; }

void SetLinkColours(const std::string&, const std::string&) {}

}  // namespace platform
