#include "platform/close_button.h"

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <utility>

namespace platform {
namespace {

using Callback = std::function<void(bool)>;

constexpr UINT_PTR kSubclass = 1;
constexpr WPARAM kCommandBits = 0xFFF0;  // the system uses the others itself

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                           DWORD_PTR callback) {
  auto* onClose = reinterpret_cast<Callback*>(callback);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, OnMessage, kSubclass);
    const std::unique_ptr<Callback> done(onClose);
    return DefSubclassProc(window, message, first, second);
  }
  if (message != WM_SYSCOMMAND || (first & kCommandBits) != SC_CLOSE) {
    return DefSubclassProc(window, message, first, second);
  }
  (*onClose)(true);
  const LRESULT result = DefSubclassProc(window, message, first, second);
  (*onClose)(false);
  return result;
}

}  // namespace

void WatchCloseButton(void* window, std::function<void(bool)> onClose) {
  auto callback = std::make_unique<Callback>(std::move(onClose));
  if (SetWindowSubclass(static_cast<HWND>(window), OnMessage, kSubclass,
                        reinterpret_cast<DWORD_PTR>(callback.get())) != 0) {
    callback.release();  // freed with the window
  }
}

}  // namespace platform
