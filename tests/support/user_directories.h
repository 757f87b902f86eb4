#pragma once

#include <cstdlib>

#include "tests/support/temporary_folder.h"

namespace test {

/// Directs what the program keeps for the user to temporary folders, and never back to the user's
/// own: nothing of a test is to reach those. On Windows it is in the registry, which is the tests'
/// own under Wine.
class UserDirectories {
 public:
  UserDirectories() {
#ifndef _WIN32
    std::filesystem::permissions(runtime_.Native(), std::filesystem::perms::owner_all);
    setenv("XDG_CONFIG_HOME", configuration_.Native().c_str(), 1);
    setenv("XDG_RUNTIME_DIR", runtime_.Native().c_str(), 1);
#endif
  }

  /// The configuration directory; empty on Windows.
  const TemporaryFolder& Configuration() const { return configuration_; }

 private:
  TemporaryFolder configuration_;
  TemporaryFolder runtime_;
};

}  // namespace test
