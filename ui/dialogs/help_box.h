#pragma once

// The help: the user's guide where it lies in the program directory or beside the executable, else
// the essentials in a window.

#include "settings/program.h"

class wxWindow;

namespace ui {

void ShowHelp(wxWindow* parent, const settings::Program& program);

}  // namespace ui
