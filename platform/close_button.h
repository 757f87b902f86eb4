#pragma once

// Tells a user's close of a window (its button, its menu, Alt+F4, the task bar) from the close
// message of another program. Windows only.

#include <functional>

namespace platform {

/// `window`: an HWND. From now on `onClose` is called with true before the window handles the
/// user's close, and with false after it.
void WatchCloseButton(void* window, std::function<void(bool)> onClose);

}  // namespace platform
