#include "tests/support/user_directories.h"

namespace test {

UserDirectories::UserDirectories() = default;
UserDirectories::~UserDirectories() = default;

}  // namespace test
