#pragma once

#include <memory>

#include "app/frontend.h"

namespace app {

/// The front end with the main window, or null if the window system cannot be reached.
std::unique_ptr<Frontend> MakeToolkitFrontend(const settings::Program& program);

}  // namespace app
