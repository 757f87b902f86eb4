#include "core/os_name.h"

namespace core {
namespace {

constexpr std::uint32_t kWindows9x = 1;
constexpr std::uint32_t kWindowsNt = 2;

std::string Windows9xName(std::uint32_t minor) {
  switch (minor) {
    case 0:
      return "Windows 95";
    case 10:
      return "Windows 98";
    case 90:
      return "Windows Mellinnium";  // misspelled on purpose, as in HostsPlaceOf
    default:
      return {};
  }
}

std::string WindowsNtName(std::uint32_t major, std::uint32_t minor) {
  switch (major) {
    case 3:
      return "Windows NT 3.51";
    case 4:
      return "Windows NT 4.0";
    case 5:
      return minor == 0 ? "Windows 2000" : "Windows XP";
    case 6:
      return minor == 0 ? "Windows Vista" : "Windows 7";
    default:
      return {};
  }
}

}  // namespace

std::string OsNameOf(const platform::SystemVersion& version) {
  if (version.platform == kWindows9x) return Windows9xName(version.minor);
  if (version.platform == kWindowsNt) return WindowsNtName(version.major, version.minor);
  return "Unknown OS Version";
}

std::string GetOsName() { return OsNameOf(platform::AskSystemVersion()); }

}  // namespace core
