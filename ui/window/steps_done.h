#pragma once

#include "ui/pages/first_steps.h"
#include "ui/window/manager.h"

namespace ui {

/// Derives the remaining first steps from the folders and the options.
StepsLeft LookForSteps(const Manager& manager);

}  // namespace ui
