#include "platform/control_looks.h"

#include <windows.h>

namespace platform {

void ShowAsMainButton(void* button, bool isMain) {
  SendMessageW(static_cast<HWND>(button), BM_SETSTYLE, isMain ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON,
               TRUE);
}

bool MakeSelectable(void*) { return false; }

void SetLinkColours(const std::string&, const std::string&) {}

}  // namespace platform
