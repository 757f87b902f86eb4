#include "core/traffic_text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace core {
namespace {

constexpr double kStep = 1024;
constexpr std::array kUnits = {"KB", "MB", "GB", "TB", "PB"};
constexpr double kMostWithDecimal = 9.95;  // larger values round to two digits
constexpr double kMostOfUnit = 999.5;      // larger values round to four digits

std::uint64_t PerSecond(std::uint64_t now, std::uint64_t before, double seconds) {
  if (now < before || seconds <= 0) return 0;
  return static_cast<std::uint64_t>(static_cast<double>(now - before) / seconds);
}

}  // namespace

std::string ByteText(std::uint64_t bytes) {
  if (bytes < 1000) return std::to_string(bytes) + " B";
  double amount = static_cast<double>(bytes) / kStep;
  std::size_t unit = 0;
  for (; amount >= kMostOfUnit && unit + 1 < kUnits.size(); ++unit) amount /= kStep;
  std::array<char, 32> text = {};
  std::snprintf(text.data(), text.size(), amount < kMostWithDecimal ? "%.1f %s" : "%.0f %s", amount,
                kUnits.at(unit));
  return text.data();
}

std::optional<int> Percent(const net::Activity& activity) {
  if (activity.total == 0) return std::nullopt;
  const double share =
      static_cast<double>(activity.traffic.sent) / static_cast<double>(activity.total);
  return static_cast<int>(std::min(share, 1.0) * 100);
}

std::string ProgressText(const net::Activity& activity) {
  const std::optional<int> percent = Percent(activity);
  return percent ? std::to_string(*percent) + "%" : "";
}

net::Traffic TrafficRate::Next(const net::Traffic& total, Clock::time_point now) {
  net::Traffic rate;
  if (lastLook_ != Clock::time_point()) {
    const double seconds = std::chrono::duration<double>(now - lastLook_).count();
    rate = {PerSecond(total.received, last_.received, seconds),
            PerSecond(total.sent, last_.sent, seconds)};
  }
  last_ = total;
  lastLook_ = now;
  return rate;
}

}  // namespace core
