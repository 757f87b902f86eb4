#pragma once

// An icon in the tray of a Linux desktop that shows what announces itself on the session bus
// (StatusNotifierItem). There is one per program. Linux only.

#include <filesystem>
#include <memory>
#include <string>

namespace platform {

class StatusNotifier {
 public:
  /// Whether somebody on the session bus shows such icons.
  static bool IsAvailable();

  /// Not shown yet. The picture is the file `iconName`.png in `iconFolder`.
  StatusNotifier(const std::string& iconName, const std::filesystem::path& iconFolder,
                 const std::string& title);
  ~StatusNotifier();

  /// `menu`: the toolkit's own menu, a GtkMenu*. Before the first Show.
  void SetMenu(void* menu);

  void Show();
  void Hide();

 private:
  class System;
  std::unique_ptr<System> system_;
};

}  // namespace platform
