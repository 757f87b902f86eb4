#pragma once

// What a screen reader is told of a control that the system knows too little of: one that is
// painted, or whose label stands beside it. It changes nothing of what is seen.

#include <string_view>

namespace platform {

enum class AccessibleRole { kItsOwn, kButton, kPicture, kStatusBar, kTable, kTree };

struct AccessibleLooks {
  std::string_view name;
  AccessibleRole role = AccessibleRole::kItsOwn;
  std::string_view description = {};
};

/// `control`: the window system's own handle, a GtkWidget* or an HWND. Where the system has no such
/// facility nothing happens.
void DescribeControl(void* control, const AccessibleLooks& looks);

}  // namespace platform
