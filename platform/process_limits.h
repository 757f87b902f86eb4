#pragma once

// What the system lets a process have and do to it, and how this one is asked to end.

#include <vector>

namespace platform {

/// Takes as many descriptors as the system grants, up to some thousands, and outlives a limit on
/// the size of its files: what does not fit is a failed write. Programs that are started later are
/// not told of the latter.
void PrepareLimits();

/// Whether so many descriptors more can be had now. Windows: always.
bool HasFreeDescriptors(int count);

/// The signals that ask the program to end. On Linux the hang-up of its terminal is one of them,
/// unless it was started so that it outlives that.
std::vector<int> EndSignals();

}  // namespace platform
