#pragma once

#include "ui/pages/first_steps.h"
#include "ui/window/manager.h"

namespace ui {

/// Derives which first steps are done from the folders, the options and what is remembered.
StepsDone LookForSteps(const Manager& manager);

}  // namespace ui
