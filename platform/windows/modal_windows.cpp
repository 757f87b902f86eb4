#include "platform/modal_windows.h"

#include <windows.h>

namespace platform {
namespace {

// The innermost dialog of the thread is the one that no other has disabled.
BOOL CALLBACK Refuse(HWND window, LPARAM) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  constexpr const wchar_t* kDialogClass = L"#32770";
  if (lstrcmpW(name, kDialogClass) != 0) return TRUE;
  if (IsWindowVisible(window) == 0 || IsWindowEnabled(window) == 0) return TRUE;
  // A box without "Cancel" takes the second message, for "No".
  PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  PostMessageW(window, WM_COMMAND, IDNO, 0);
  return FALSE;
}

}  // namespace

void DismissModalWindow() {
  EndMenu();
  EnumThreadWindows(GetCurrentThreadId(), &Refuse, 0);
}

}  // namespace platform
