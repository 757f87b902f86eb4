#include "core/traffic_text.h"

#include <gtest/gtest.h>

#include "core/service_addresses.h"

namespace {

TEST(TrafficText, HasTwoOrThreeDigitsThatCount) {
  const std::pair<std::uint64_t, const char*> cases[] = {
      {0, "0 B"},       {999, "999 B"},         {1536, "1.5 KB"},
      {10239, "10 KB"}, {1023 << 10, "1.0 MB"}, {std::uint64_t{5} << 40, "5.0 TB"}};
  for (const auto& [bytes, shown] : cases) EXPECT_EQ(core::ByteText(bytes), shown);
}

TEST(TrafficText, TellsHowFarATransferIsOnlyWhereItsSizeIsKnown) {
  const auto progress = [](std::uint64_t total, std::uint64_t sent) {
    return core::ProgressText({.total = total, .traffic = {0, sent}});
  };
  EXPECT_EQ(progress(0, 100), "");
  EXPECT_EQ(progress(1000, 999), "99%");
  EXPECT_EQ(progress(1000, 1200), "100%");
}

TEST(TrafficText, RatesCountFromTheLookBefore) {
  using namespace std::chrono_literals;
  core::TrafficRate rate;
  const core::TrafficRate::Clock::time_point start(10s);
  EXPECT_EQ(rate.Next({1000, 1000}, start).sent, 0U);
  EXPECT_EQ(rate.Next({1000, 3000}, start + 500ms).sent, 4000U);
  EXPECT_EQ(rate.Next({1000, 3000}, start + 500ms).sent, 0U);  // twice at the same moment
}

TEST(Reach, NamesThePortOnlyWhereClientsWouldNotTakeIt) {
  const auto at = [](core::ServiceKind service, std::uint16_t first, std::uint16_t second) {
    return core::ReachedAt(service, "10.0.0.5", {first, second});
  };
  EXPECT_EQ(at(core::ServiceKind::kWeb, 80, 0), "http://10.0.0.5/");
  EXPECT_EQ(at(core::ServiceKind::kFtp, 2121, 0), "ftp://10.0.0.5:2121/");
  EXPECT_EQ(at(core::ServiceKind::kMail, 25, 110), "SMTP 10.0.0.5:25  POP3 10.0.0.5:110");
}

}  // namespace
