#pragma once

// The lock under which several processes, or threads, change the files of one folder in turn. It is
// advisory and held until the object goes; reading does not need it.

#include <filesystem>
#include <system_error>

#include "platform/linux/descriptor.h"

namespace platform {

class LockedFolder {
 public:
  /// Creates `folder` if it is missing, accessible to the user alone, and the folders above it.
  /// Waits for the lock, which is not held if `error` is set.
  LockedFolder(const std::filesystem::path& folder, std::error_code& error);

 private:
  Descriptor lock_;
};

}  // namespace platform
