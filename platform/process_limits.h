#pragma once

// The limits of the process, and the signals that end it.

#include <vector>

namespace platform {

/// Raises the limit on descriptors as far as the system allows, up to some thousands. Ignores the
/// signal for a file size limit, so that exceeding it is a failed write; child processes do not
/// inherit this.
void PrepareLimits();

/// Whether `count` more descriptors can be opened now. Windows: always.
bool HasFreeDescriptors(int count);

/// The signals that ask the program to end. On Linux they include the hang-up of the terminal,
/// unless the program was started to survive it.
std::vector<int> EndSignals();

}  // namespace platform
