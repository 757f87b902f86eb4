#pragma once

// The help: the user's guide where it lies beside the program, else the essentials in a window.

#include "core/program.h"

class wxWindow;

namespace ui {

void ShowHelp(wxWindow* parent, const core::Program& program);

}  // namespace ui
