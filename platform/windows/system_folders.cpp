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

std::filesystem::path DirectoryFrom(UINT(WINAPI* ask)(LPWSTR, UINT)) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(ask(path.data(), MAX_PATH));
  return path;
}

}  // namespace

std::filesystem::path HostsFile(HostsPlace place) {
  const std::wstring named = EnvironmentText(L"TARNWERK_HOSTS");
  if (!named.empty()) return named;
  if (place == HostsPlace::kWindowsDirectory) return DirectoryFrom(&GetWindowsDirectoryW) / "hosts";
  return DirectoryFrom(&GetSystemDirectoryW) / "drivers" / "etc" / "hosts";
}

std::filesystem::path ConfigurationDirectory() { return EnvironmentText(L"APPDATA"); }

std::filesystem::path StateDirectory() { return ConfigurationDirectory() / "Tarnwerk"; }

std::filesystem::path FirstFolderToChooseFrom() { return L"C:\\"; }

std::filesystem::path DataDirectory() {
  const std::filesystem::path local = EnvironmentText(L"LOCALAPPDATA");
  return local.is_absolute() ? local / "Tarnwerk" : "";
}

}  // namespace platform
