#pragma once

#include "ui/pages/first_steps.h"
#include "ui/window/manager.h"

namespace ui {

/// Which of the first steps are still to be taken, by what the folders hold and the options say.
StepsLeft LookForSteps(const Manager& manager);

}  // namespace ui
