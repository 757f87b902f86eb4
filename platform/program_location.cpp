#include "platform/program_location.h"

#include "platform/system_folders.h"

namespace platform {

std::filesystem::path SampleDirectory() { return ExecutablePath().parent_path() / "sample"; }

std::filesystem::path PortableSampleDirectory() {
  return ExecutablePath().parent_path() / "portable";
}

bool IsInstalled() {
  std::error_code error;
  return std::filesystem::is_directory(SampleDirectory(), error);
}

std::filesystem::path UsualProgramDirectory() {
  return IsInstalled() ? DataDirectory() : ExecutablePath().parent_path();
}

}  // namespace platform
