#include "platform/process_limits.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "platform/linux/descriptor.h"

namespace platform {
namespace {

// Enough for the maximum number of connections and the files that they have open.
constexpr rlim_t kMostDescriptors = 8192;

void TakeDescriptors() {
  rlimit limit = {};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= kMostDescriptors) return;
  limit.rlim_cur = std::min(limit.rlim_max, kMostDescriptors);
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

void PrepareLimits() {
  TakeDescriptors();
  std::signal(SIGXFSZ, SIG_IGN);
}

bool HasFreeDescriptors(int count) {
  std::vector<Descriptor> taken;
  for (int i = 0; i < count; ++i) {
    taken.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!taken.back().IsOpen()) return false;
  }
  return true;
}

std::vector<int> EndSignals() {
  std::vector<int> signals = {SIGINT, SIGTERM};
  struct sigaction hangUp = {};
  const bool isIgnored = sigaction(SIGHUP, nullptr, &hangUp) == 0 && hangUp.sa_handler == SIG_IGN;
  if (!isIgnored) signals.push_back(SIGHUP);
  return signals;
}

}  // namespace platform
