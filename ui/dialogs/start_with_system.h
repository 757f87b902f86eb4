#pragma once

// Starting with the system, as the options and the menu set it.

#include "settings/program.h"

class wxWindow;

namespace ui {

/// Sets whether the program starts with the system; a box tells the user what is wrong with that.
void SetToStartWithSystem(wxWindow* parent, const settings::Program& program, bool wanted);

}  // namespace ui
