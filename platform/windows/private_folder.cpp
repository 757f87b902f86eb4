#include "platform/private_folder.h"

#include <windows.h>

#include <random>
#include <string>

namespace platform {

// The folder for temporary files is the user's own.
std::filesystem::path MakePrivateFolder(std::error_code& error) {
  const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
  if (error) return {};
  const std::filesystem::path folder =
      parent / (L"tarnwerk-" + std::to_wstring(std::random_device()()));
  if (CreateDirectoryW(folder.c_str(), nullptr) != 0) return folder;
  error.assign(static_cast<int>(GetLastError()), std::system_category());
  return {};
}

}  // namespace platform
