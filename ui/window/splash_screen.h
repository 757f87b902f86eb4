#pragma once

// A splash screen with the program's name and picture. A click or a key skips it.

#include <functional>

namespace ui {

/// Shows it for less than half a second and then calls `then` from the event loop.
void ShowSplashScreen(std::function<void()> then);

}  // namespace ui
