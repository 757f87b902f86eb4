#include "ui/window/unseen_problems.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "files/files.h"
#include "files/log_tail.h"
#include "settings/user_state.h"

namespace ui {
namespace {

constexpr const char* kSection = "Problems";
constexpr const char* kSeen = "Seen";

// The most that window.ini holds. A log of that size counts as seen.
constexpr std::uint64_t kLargest = std::numeric_limits<int>::max();

constexpr std::uint64_t kMostRead = 1U << 16;  // bytes
constexpr std::ptrdiff_t kMostCounted = 99;

}  // namespace

UnseenProblems::UnseenProblems(std::string log) : log_(std::move(log)) {
  const std::optional<int> seen = settings::Remembered(kSection, kSeen);
  kept_ = seen && *seen >= 0 ? static_cast<std::uint64_t>(*seen) : kLargest;
  seen_ = kept_ < kLargest ? kept_ : Size();
}

UnseenProblems::~UnseenProblems() { Keep(); }

std::uint64_t UnseenProblems::Size() const {
  std::error_code error;
  return files::InspectPath(log_, error).size;
}

std::string UnseenProblems::Count() {
  const std::uint64_t size = Size();
  if (size < seen_) seen_ = 0;  // another log
  Keep();
  if (size == seen_) return "";
  if (std::exchange(counted_, size) == size) return count_;
  const files::LogTail tail = files::ReadLogTail(log_, std::min(size - seen_, kMostRead));
  const auto lines = std::count_if(tail.lines.begin(), tail.lines.end(),
                                   [](const std::string& line) { return !line.empty(); });
  const bool isMore = lines > kMostCounted || size - seen_ > kMostRead;
  count_ = std::to_string(std::clamp<std::ptrdiff_t>(lines, 1, kMostCounted)) + (isMore ? "+" : "");
  return count_;
}

void UnseenProblems::Keep() {
  const std::uint64_t seen = std::min(seen_, kLargest);
  if (std::exchange(kept_, seen) != seen)
    settings::Remember(kSection, kSeen, static_cast<int>(seen));
}

}  // namespace ui
