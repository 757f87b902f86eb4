#include "tests/support/user_directories.h"

#include <cstdlib>

namespace test {

UserDirectories::UserDirectories() {
  std::filesystem::permissions(runtime_.Native(), std::filesystem::perms::owner_all);
  setenv("XDG_CONFIG_HOME", configuration_.Native().c_str(), 1);
  setenv("XDG_RUNTIME_DIR", runtime_.Native().c_str(), 1);
}

UserDirectories::~UserDirectories() {
  // Not back to the user's own: nothing of a test is to reach those.
  setenv("XDG_CONFIG_HOME", "/nonexistent", 1);
  setenv("XDG_RUNTIME_DIR", "/nonexistent", 1);
}

}  // namespace test
