#pragma once

// The pictures of the tray icon: the program's own, grey while no service runs, with a mark when
// somebody is connected or a start has failed.

#include <wx/bitmap.h>

namespace ui {

enum class TrayState { kOff, kRunning, kConnected, kFailed };

/// A square of `size` physical pixels.
wxBitmap TrayPicture(TrayState state, int size);

}  // namespace ui
