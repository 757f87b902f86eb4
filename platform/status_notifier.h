#pragma once

// An icon in the tray of a Linux desktop, through the StatusNotifierItem protocol on the session
// bus. At most one per program. Linux only.

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace platform {

class StatusNotifier {
 public:
  /// Whether a tray on the session bus shows such icons.
  static bool IsAvailable();

  /// Created hidden. The picture is `iconName`.png in `iconFolder`. `onLost` is called when the
  /// tray has ended and not come back within some seconds.
  StatusNotifier(const std::string& iconName, const std::filesystem::path& iconFolder,
                 const std::string& title, std::function<void()> onLost);
  ~StatusNotifier();

  /// `menu`: a GtkMenu*. Must be set before the first Show.
  void SetMenu(void* menu);

  /// Another picture in the same folder.
  void SetIcon(const std::string& iconName);

  void Show();
  void Hide();

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
