#include "app/window_frontend.h"

// The entry point that window_module_loader.cpp looks up.
extern "C" __attribute__((visibility("default"))) app::Frontend* MakeTarnwerkWindow(
    const settings::Program& program) {
  return app::MakeToolkitFrontend(program).release();
}
