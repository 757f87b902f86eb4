#pragma once

// Amounts of bytes and the state of transfers as a person reads them.

#include <cstdint>
#include <string>

#include "net/connection_report.h"

namespace core {

/// "512 B", "1.5 KB", "23 KB", "4.0 GB"; a KB is 1024 bytes.
std::string ByteText(std::uint64_t bytes);

/// How far a transfer is, "45%". Empty where the size is unknown.
std::string ProgressText(const net::Activity& activity);

/// Measures a rate from totals that are looked at now and then.
class TrafficRate {
 public:
  using Clock = std::chrono::steady_clock;

  /// The bytes per second since the last look; 0 at the first.
  net::Traffic Next(const net::Traffic& total, Clock::time_point now);

 private:
  net::Traffic last_;
  Clock::time_point lastLook_ = {};
};

}  // namespace core
