#include "platform/private_folder.h"

#include <stdlib.h>

#include <cerrno>
#include <string>

namespace platform {

std::filesystem::path MakePrivateFolder(std::error_code& error) {
  const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
  if (error) return {};
  std::string name = parent / "tarnwerk-XXXXXX";
  if (mkdtemp(name.data()) != nullptr) return name;
  error.assign(errno, std::generic_category());
  return {};
}

}  // namespace platform
