#include "platform/program_location.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr const char* kExecutable = "/proc/self/exe";
constexpr std::string_view kDeleted = " (deleted)";  // what the system appends to the path

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

fs::path ExecutablePath() {
  std::error_code error;
  const fs::path path = fs::read_symlink(kExecutable, error);
  const std::string text = path.string();
  // The name of a file may end so, too.
  if (!text.ends_with(kDeleted) || fs::equivalent(path, kExecutable, error)) return path;
  return text.substr(0, text.size() - kDeleted.size());
}

std::filesystem::path ProgramDirectory() {
  if (!IsSet("TARNWERK_HOME")) return UsualProgramDirectory();
  std::error_code error;
  const std::filesystem::path home = std::getenv("TARNWERK_HOME");
  const std::filesystem::path absolute = std::filesystem::absolute(home, error).lexically_normal();
  // "dir/" and "dir" are the same directory; a trailing separator leaves an empty last component.
  return absolute.has_filename() ? absolute : absolute.parent_path();
}

std::string CommandLineText(int argumentCount, char** arguments) {
  std::string text;
  for (int i = 1; i < argumentCount; ++i) {
    if (i > 1) text += ' ';
    text += arguments[i];
  }
  return text;
}

bool HandsStartOver() { return IsSet("TARNWERK_START_RUNNING"); }

bool HasDisplay() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY"); }

}  // namespace platform
