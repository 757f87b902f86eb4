#pragma once

// The help: the user's guide where it lies in the program directory or beside the executable, else
// the essentials in a window.

#include "core/program.h"

class wxWindow;

namespace ui {

void ShowHelp(wxWindow* parent, const core::Program& program);

}  // namespace ui
