#pragma once

// The program's name and picture for the moment before its window is there. A click or a key skips
// it.

#include <functional>

namespace ui {

/// Shows it for less than half a second and then calls `then`, from the event loop.
void ShowSplashScreen(std::function<void()> then);

}  // namespace ui
