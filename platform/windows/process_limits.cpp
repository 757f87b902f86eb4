#include "platform/process_limits.h"

#include <csignal>

namespace platform {

void PrepareLimits() {}

bool HasFreeDescriptors(int) { return true; }

std::vector<int> EndSignals() { return {SIGINT, SIGTERM}; }

}  // namespace platform
