#include "platform/linux/large_file.h"

#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

namespace platform {

void CloseBeside(Descriptor file) {
  constexpr int kMostThreads = 8;
  static std::atomic<int> threads = 0;
  if (threads >= kMostThreads) return;
  ++threads;
  try {
    std::thread([file = std::move(file)]() mutable {
      file = {};
      --threads;
    }).detach();
  } catch (const std::system_error&) {
    --threads;  // `file` is closed already
  }
}

}  // namespace platform
