#include "platform/system_version.h"

#include <windows.h>

namespace platform {

// The system reports at most the newest version that the program's manifest names.
SystemVersion AskSystemVersion() {
  OSVERSIONINFOW information = {};
  information.dwOSVersionInfoSize = sizeof(information);
  if (GetVersionExW(&information) == 0) return {};
  return {information.dwPlatformId, information.dwMajorVersion, information.dwMinorVersion};
}

}  // namespace platform
