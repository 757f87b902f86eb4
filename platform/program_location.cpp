#include "platform/program_location.h"

#include "platform/system_folders.h"

namespace platform {

std::filesystem::path SampleDirectory() { return ExecutablePath().parent_path() / "sample"; }

std::filesystem::path UsualProgramDirectory() {
  std::error_code error;
  const std::filesystem::path data = DataDirectory();
  const bool installed = !data.empty() && std::filesystem::is_directory(SampleDirectory(), error);
  return installed ? data : ExecutablePath().parent_path();
}

}  // namespace platform
