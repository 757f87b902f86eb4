#include "text/date_time.h"

#include <array>
#include <ctime>

namespace text {

std::string DateTimeText(WallTime time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  // Safe despite the shared result: only one thread formats times.
  const std::tm* local = std::localtime(&seconds);
  if (local == nullptr) return {};
  std::array<char, 32> text;
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", local);
  return {text.data(), length};
}

}  // namespace text
