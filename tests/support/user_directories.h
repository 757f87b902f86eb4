#pragma once

#include "tests/support/temporary_folder.h"

namespace test {

/// While it lives, what the program keeps for the user goes to a temporary folder. On Windows it is
/// in the registry, which is the tests' own under Wine.
class UserDirectories {
 public:
  UserDirectories();
  ~UserDirectories();
  UserDirectories(const UserDirectories&) = delete;
  UserDirectories& operator=(const UserDirectories&) = delete;

  /// The configuration directory; empty on Windows.
  const TemporaryFolder& Configuration() const { return configuration_; }

 private:
  TemporaryFolder configuration_;
  TemporaryFolder runtime_;
};

}  // namespace test
