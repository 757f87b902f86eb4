#include "core/sign_in_delays.h"

#include <algorithm>

namespace core {

SignInDelays::Clock::duration SignInDelays::WaitOf(const std::string& address,
                                                   Clock::time_point now) const {
  const auto record = records_.find(address);
  if (record == records_.end()) return Clock::duration::zero();
  return record->second.failed + record->second.wait - now;
}

void SignInDelays::NoteFailure(const std::string& address, Clock::time_point now) {
  if (!records_.contains(address)) MakeRoom();
  Record& record = records_[address];
  const bool isForgotten = now - record.failed > kMemory;
  const Clock::duration doubled = std::max<Clock::duration>(2 * record.wait, kFirstWait);
  record.wait = isForgotten ? kFirstWait : std::min<Clock::duration>(doubled, kLongestWait);
  record.failed = now;
}

void SignInDelays::MakeRoom() {
  if (records_.size() < kMostAddresses) return;
  records_.erase(
      std::min_element(records_.begin(), records_.end(), [](const auto& left, const auto& right) {
        return left.second.failed < right.second.failed;
      }));
}

}  // namespace core
