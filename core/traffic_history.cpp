#include "core/traffic_history.h"

#include <utility>

namespace core {

void TrafficHistory::Add(const std::array<net::Traffic, kServices.size()>& totals,
                         TrafficRate::Clock::time_point now) {
  Sample sample;
  for (std::size_t i = 0; i < totals.size(); ++i) {
    const net::Traffic rate = rates_[i].Next(totals[i], now);
    sample[i] = rate.received + rate.sent;
  }
  if (!std::exchange(begun_, true)) return;
  samples_.push_back(sample);
  if (samples_.size() > kMostSamples) samples_.pop_front();
}

}  // namespace core
