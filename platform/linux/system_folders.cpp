#include "platform/system_folders.h"

#include <cstdlib>

namespace platform {
namespace {

std::filesystem::path FromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

}  // namespace

std::filesystem::path HostsFile(HostsPlace) {
  const std::filesystem::path named = FromEnvironment("TARNWERK_HOSTS");
  return named.empty() ? "/etc/hosts" : named;
}

std::filesystem::path ConfigurationDirectory() {
  const std::filesystem::path configured = FromEnvironment("XDG_CONFIG_HOME");
  return configured.is_absolute() ? configured : FromEnvironment("HOME") / ".config";
}

std::filesystem::path StateDirectory() { return ConfigurationDirectory() / "Tarnwerk"; }

std::filesystem::path FirstFolderToChooseFrom() {
  const std::filesystem::path home = FromEnvironment("HOME");
  return home.empty() ? "/" : home;
}

std::filesystem::path DataDirectory() {
  const std::filesystem::path configured = FromEnvironment("XDG_DATA_HOME");
  if (configured.is_absolute()) return configured / "tarnwerk";
  const std::filesystem::path home = FromEnvironment("HOME");
  return home.is_absolute() ? home / ".local" / "share" / "tarnwerk" : "";
}

}  // namespace platform
