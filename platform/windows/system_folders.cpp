#include "platform/system_folders.h"

#include <windows.h>

#include <string>

namespace platform {
namespace {

constexpr DWORD kLongestPath = 32768;

std::wstring EnvironmentText(const wchar_t* variable) {
  std::wstring value(kLongestPath, L'\0');
  value.resize(GetEnvironmentVariableW(variable, value.data(), kLongestPath));
  return value;
}

}  // namespace

std::filesystem::path HostsFile() {
  const std::wstring named = EnvironmentText(L"TARNWERK_HOSTS");
  if (!named.empty()) return named;
  std::wstring system(MAX_PATH, L'\0');
  system.resize(GetSystemDirectoryW(system.data(), MAX_PATH));
  return std::filesystem::path(system) / "drivers" / "etc" / "hosts";
}

std::filesystem::path ConfigurationDirectory() { return EnvironmentText(L"APPDATA"); }

std::filesystem::path StateDirectory() { return ConfigurationDirectory() / "Tarnwerk"; }

}  // namespace platform
