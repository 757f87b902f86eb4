#pragma once

// An icon in the notification area that belongs to a window. While it is shown, the window
// procedure is replaced by one that reports mouse events on the icon. Windows only.

#include <functional>
#include <memory>
#include <string>

namespace platform {

class NotifyIcon {
 public:
  /// `window`: an HWND. `onMouse` gets the number of the mouse message.
  NotifyIcon(void* window, std::function<void(unsigned code)> onMouse);
  ~NotifyIcon();

  /// The size in pixels that the system shows without scaling.
  int IconSize() const;

  /// `icon`: an HICON. `tip`: only the first 63 characters are shown. The icon is added again when
  /// the shell restarts. False if it could not be added.
  bool Add(void* icon, const std::string& tip);

  /// Replaces the picture if the icon is shown.
  void SetIcon(void* icon);

  /// Shows a notice at the icon, cut to 63 and 255 characters. False if the icon is not shown.
  bool Inform(const std::string& title, const std::string& text);

  /// Removes the icon and restores the window procedure.
  void Remove();

  /// Must be called around a pop-up menu of the window, which would otherwise not close when the
  /// user clicks elsewhere.
  void BeforeMenu();
  void AfterMenu();

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
