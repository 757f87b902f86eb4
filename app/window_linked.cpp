// On Windows the window is part of the one executable.

#include "app/window_frontend.h"

namespace app {

std::unique_ptr<Frontend> MakeWindowFrontend() { return MakeToolkitFrontend(); }

}  // namespace app
