#include "platform/control_looks.h"

#include <windows.h>

#include <commctrl.h>

namespace platform {

void ShowAsMainButton(void* button, bool isMain) {
  SendMessageW(static_cast<HWND>(button), BM_SETSTYLE, isMain ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON,
               TRUE);
}

bool MakeSelectable(void*) { return false; }

void SetLinkColours(const std::string&, const std::string&) {}

void SetRoomAroundCaptions(void* tabs, int width, int height) {
  SendMessageW(static_cast<HWND>(tabs), TCM_SETPADDING, 0, MAKELPARAM(width, height));
}

}  // namespace platform
