#pragma once

// Byte counts and the progress of transfers as text for the user.

#include <cstdint>
#include <optional>
#include <string>

#include "net/connection_report.h"

namespace core {

/// "512 B", "1.5 KB", "23 KB", "4.0 GB"; a KB is 1024 bytes.
std::string ByteText(std::uint64_t bytes);

/// How far a transfer is, 0 to 100; none if its size is unknown. And the same as "45%", or empty.
std::optional<int> Percent(const net::Activity& activity);
std::string ProgressText(const net::Activity& activity);

/// Derives a rate from running totals.
class TrafficRate {
 public:
  using Clock = std::chrono::steady_clock;

  /// The bytes per second since the previous call; 0 on the first.
  net::Traffic Next(const net::Traffic& total, Clock::time_point now);

 private:
  net::Traffic last_;
  Clock::time_point lastLook_ = {};
};

}  // namespace core
