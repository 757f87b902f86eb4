// On Windows the window is linked into the executable.

#include "app/window_frontend.h"

namespace app {

std::unique_ptr<Frontend> MakeWindowFrontend(const settings::Program& program) {
  return MakeToolkitFrontend(program);
}

}  // namespace app
