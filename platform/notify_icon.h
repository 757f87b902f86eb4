#pragma once

// An icon in the notification area that belongs to a window: what the mouse does on it is told to
// that window. While the icon is there, the window's messages go through a handler of ours.
// Windows only.

#include <functional>
#include <memory>
#include <string>

namespace platform {

class NotifyIcon {
 public:
  /// `window`: an HWND. `onMouse` gets the mouse message's number.
  NotifyIcon(void* window, std::function<void(unsigned code)> onMouse);
  ~NotifyIcon();

  /// In pixels, what the system shows without scaling.
  int IconSize() const;

  /// `icon`: an HICON, `tip`: at most 63 characters of it are shown. The icon is put there again
  /// when the desktop's shell has been restarted. False if it could not be added.
  bool Add(void* icon, const std::string& tip);

  /// Takes the icon away and gives the window its own message handling back.
  void Remove();

  /// To be called round a pop-up menu of the window, which would not close by a click elsewhere
  /// otherwise.
  void BeforeMenu();
  void AfterMenu();

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
