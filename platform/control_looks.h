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
/// "#rrggbb". Windows has its own.
void SetLinkColours(const std::string& enabled, const std::string& disabled);

}  // namespace platform
