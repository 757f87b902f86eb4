#pragma once

// The description that a screen reader gets of a control about which the system knows too little: a
// painted one, or one whose label is beside it. It changes nothing on the screen.

#include <string_view>

namespace platform {

enum class AccessibleRole { kItsOwn, kButton, kLink, kPicture, kStatusBar, kTable, kTree };

struct AccessibleLooks {
  std::string_view name;
  AccessibleRole role = AccessibleRole::kItsOwn;
  std::string_view description = {};
};

/// `control`: the native handle, a GtkWidget* or an HWND. Does nothing where the system has no such
/// facility.
void DescribeControl(void* control, const AccessibleLooks& looks);

}  // namespace platform
