#include "platform/system_version.h"

namespace platform {

SystemVersion AskSystemVersion() { return {}; }

}  // namespace platform
