#pragma once

// Asks before clients are cut off.

#include <string>

class wxWindow;

namespace ui {

/// Whether to go on: `who` (core/who_is_connected.h) is cut off by it. Does not ask if that is
/// empty, or if the user has said not to be asked again. `action`: what happens on going on, a
/// verb.
bool MayCutOff(wxWindow* parent, const std::string& who, const std::string& action);

}  // namespace ui
