#pragma once

// A file and its name on their way to the disk. To flush takes what the disk takes, so it may be
// done on another thread than everything else with files.

#include <string_view>
#include <system_error>

#include "platform/file.h"

namespace files {

class PendingFlush {
 public:
  /// Opens an existing file.
  PendingFlush(std::string_view path, std::error_code& error);

  /// Returns once content and name would survive a power failure. Uses nothing but this object.
  std::error_code Flush();

 private:
  platform::NativeString folder_;
  platform::File file_;
};

}  // namespace files
