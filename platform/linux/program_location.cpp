#include "platform/program_location.h"

#include <cstdlib>

namespace platform {
namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

std::filesystem::path ExecutablePath() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
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

bool HasDisplay() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY"); }

}  // namespace platform
