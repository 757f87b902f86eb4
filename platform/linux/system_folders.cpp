#include "platform/system_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace platform {
namespace {

std::filesystem::path FromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

// Services and jobs may run without HOME.
std::filesystem::path Home() {
  const std::filesystem::path named = FromEnvironment("HOME");
  if (named.is_absolute()) return named;
  const passwd* user = getpwuid(geteuid());
  const std::filesystem::path known = user == nullptr ? "" : user->pw_dir;
  return known.is_absolute() ? known : "/";
}

}  // namespace

std::filesystem::path HostsFile(HostsPlace) {
  const std::filesystem::path named = FromEnvironment("TARNWERK_HOSTS");
  return named.empty() ? "/etc/hosts" : named;
}

std::filesystem::path ConfigurationDirectory() {
  const std::filesystem::path configured = FromEnvironment("XDG_CONFIG_HOME");
  return configured.is_absolute() ? configured : Home() / ".config";
}

std::filesystem::path StateDirectory() { return ConfigurationDirectory() / "Tarnwerk"; }

std::filesystem::path FirstFolderToChooseFrom() { return Home(); }

std::filesystem::path DataDirectory() {
  const std::filesystem::path configured = FromEnvironment("XDG_DATA_HOME");
  if (configured.is_absolute()) return configured / "tarnwerk";
  return Home() / ".local" / "share" / "tarnwerk";
}

}  // namespace platform
