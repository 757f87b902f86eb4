// On Linux the window needs some eighty shared libraries, which take longer to load than the
// services to start. They are in a module, so that a machine without a display never loads them.

#include <string>

#include "app/frontend.h"
#include "platform/module.h"
#include "platform/program_location.h"
#include "platform/standard_streams.h"

namespace app {

std::unique_ptr<Frontend> MakeWindowFrontend(const settings::Program& program) {
  if (!platform::HasDisplay()) return nullptr;
  using Maker = Frontend* (*)(const settings::Program&);
  std::string reason;
  void* maker =
      platform::FindInModule(platform::ExecutablePath().parent_path() / "tarnwerk-window.so",
                             "MakeTarnwerkWindow", reason);
  if (maker == nullptr) {
    platform::SayOnStandardError("Tarnwerk: no window, the services run without: " + reason);
    return nullptr;
  }
  return std::unique_ptr<Frontend>(reinterpret_cast<Maker>(maker)(program));
}

}  // namespace app
