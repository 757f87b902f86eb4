#pragma once

// The traffic of the last minutes, a sample every few seconds.

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>

#include "core/service.h"
#include "core/traffic_text.h"

namespace core {

class TrafficHistory {
 public:
  static constexpr std::size_t kMostSamples = 150;

  /// The bytes per second of each service, both ways.
  using Sample = std::array<std::uint64_t, kServices.size()>;

  /// `totals`: the bytes of each service so far. The first call only begins.
  void Add(const std::array<net::Traffic, kServices.size()>& totals,
           TrafficRate::Clock::time_point now);

  /// Newest last.
  const std::deque<Sample>& Samples() const { return samples_; }

 private:
  std::array<TrafficRate, kServices.size()> rates_;
  std::deque<Sample> samples_;
  bool begun_ = false;
};

}  // namespace core
