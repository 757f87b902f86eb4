#include "app/window_frontend.h"

// What window_module_loader.cpp looks for.
extern "C" __attribute__((visibility("default"))) app::Frontend* MakeTarnwerkWindow() {
  return app::MakeToolkitFrontend().release();
}
