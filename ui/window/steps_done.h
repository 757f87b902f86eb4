#pragma once

#include "ui/pages/first_steps.h"
#include "ui/window/manager.h"

namespace ui {

/// Derives how far the first steps are from the folders, the options and what is remembered.
StepStates LookForSteps(const Manager& manager);

}  // namespace ui
