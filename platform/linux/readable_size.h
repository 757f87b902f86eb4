#pragma once

#include <cstdint>
#include <system_error>

namespace platform {

/// The size of a file that can be opened for reading; `name` is relative to `folder`, or a whole
/// path.
std::uint64_t ReadableSizeIn(int folder, const char* name, std::error_code& error);

}  // namespace platform
