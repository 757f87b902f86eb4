#pragma once

// Looks of the system's controls that the window toolkit cannot set.

#include <string>

namespace platform {

/// The looks of the button that a user most likely wants, or those of the others. `button`: the
/// system's handle. Does not make Enter press it.
void ShowAsMainButton(void* button, bool isMain = true);

/// Lets the user select a label's text with the mouse, and copy it. The label still never gets the
/// focus. False if the system cannot do that. `label`: the system's handle.
bool MakeSelectable(void* label);

/// The colours of all addresses that can be clicked, and of those that cannot at the moment, as
/// "#rrggbb". Not of the links that the program paints itself on Windows.
void SetLinkColours(const std::string& enabled, const std::string& disabled);

/// Sets the distance between a tab's caption and its edges, in pixels, where the system's own does
/// not grow with the scale of the screen. `tabs`: the system's handle.
void SetRoomAroundCaptions(void* tabs, int width, int height);

}  // namespace platform
