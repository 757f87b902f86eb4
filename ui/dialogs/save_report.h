#pragma once

// What a dialog does once it has saved: it closes, or says that it could not and stays open.

#include <system_error>

#include "settings/program.h"
#include "ui/controls/message_box.h"

namespace ui {

/// Whether there was no error. Else the user is told in a box, and the error log as well.
bool IsSaved(wxWindow* parent, const settings::Program& program, const std::error_code& error,
             const char* title = kProgramTitle);

}  // namespace ui
