#include "platform/program_location.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

constexpr DWORD kLongestPath = 32768;

// The program's name ends at the closing quotation mark, or at the first blank if unquoted.
std::wstring_view WithoutProgramName(std::wstring_view line) {
  const bool quoted = line.starts_with(L'"');
  const std::size_t end = quoted ? line.find(L'"', 1) : line.find_first_of(L" \t");
  if (end == std::wstring_view::npos) return {};
  return line.substr(end + 1);
}

std::wstring EnvironmentText(const wchar_t* variable) {
  std::wstring value(kLongestPath, L'\0');
  value.resize(GetEnvironmentVariableW(variable, value.data(), kLongestPath));
  return value;
}

}  // namespace

std::filesystem::path ExecutablePath() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestPath));
  return path;
}

std::filesystem::path ProgramDirectory() {
  const std::wstring home = EnvironmentText(L"TARNWERK_HOME");
  if (home.empty()) return UsualProgramDirectory();
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(home, error).lexically_normal();
  return absolute.has_filename() ? absolute : absolute.parent_path();
}

std::string CommandLineText(int, char**) {
  return NarrowText(WithoutProgramName(GetCommandLineW()));
}

bool HandsStartOver() { return false; }

bool HasDisplay() { return true; }

}  // namespace platform
