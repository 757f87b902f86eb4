#pragma once

// To free what a file of hundreds of MiB takes, its last close can keep the system busy for a tenth
// of a second, in which nobody else would be served.

#include <cstdint>

#include "platform/linux/descriptor.h"

namespace platform {

/// From this size on, in bytes, it takes more than a few milliseconds.
inline constexpr std::uint64_t kLargeFile = std::uint64_t{8} << 20;

/// Closes `file` on a thread of its own, which touches none of the program's state, unless there
/// are many of these threads already.
void CloseBeside(Descriptor file);

}  // namespace platform
