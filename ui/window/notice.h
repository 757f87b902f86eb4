#pragma once

// A notification of the desktop, which passes by itself.

#include <string>

class wxWindow;

namespace ui {

/// Shows nothing on a desktop without notifications.
void ShowNotice(wxWindow& window, const std::string& title, const std::string& text);

}  // namespace ui
