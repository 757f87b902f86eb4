#include "core/traffic_text.h"

#include <gtest/gtest.h>

#include "core/service_addresses.h"

namespace {

TEST(TrafficText, HasTwoOrThreeDigitsThatCount) {
  EXPECT_EQ(core::ByteText(0), "0 B");
  EXPECT_EQ(core::ByteText(999), "999 B");
  EXPECT_EQ(core::ByteText(1536), "1.5 KB");
  EXPECT_EQ(core::ByteText(10 * 1024 - 1), "10 KB");
  EXPECT_EQ(core::ByteText(1023 * 1024), "1.0 MB");
  EXPECT_EQ(core::ByteText(std::uint64_t{5} << 40), "5.0 TB");
}

TEST(TrafficText, TellsHowFarATransferIsOnlyWhereItsSizeIsKnown) {
  const auto progress = [](std::uint64_t total, std::uint64_t sent) {
    return core::ProgressText({"GET /", total, {0, sent}});
  };
  EXPECT_EQ(progress(0, 100), "");
  EXPECT_EQ(progress(1000, 0), "0%");
  EXPECT_EQ(progress(1000, 999), "99%");
  EXPECT_EQ(progress(1000, 1200), "100%");
}

TEST(TrafficText, RatesCountFromTheLookBefore) {
  using namespace std::chrono_literals;
  core::TrafficRate rate;
  const core::TrafficRate::Clock::time_point start(10s);
  EXPECT_EQ(rate.Next({1000, 1000}, start).sent, 0U);
  const net::Traffic next = rate.Next({1000, 3000}, start + 500ms);
  EXPECT_EQ(next.sent, 4000U);
  EXPECT_EQ(next.received, 0U);
  EXPECT_EQ(rate.Next({1000, 3000}, start + 500ms).sent, 0U);  // twice at the same moment
}

TEST(Reach, NamesThePortOnlyWhereClientsWouldNotTakeIt) {
  using core::ReachedAt;
  using core::ServiceKind;
  EXPECT_EQ(ReachedAt(ServiceKind::kWeb, "10.0.0.5", {80, 0}), "http://10.0.0.5/");
  EXPECT_EQ(ReachedAt(ServiceKind::kWeb, "10.0.0.5", {8080, 0}), "http://10.0.0.5:8080/");
  EXPECT_EQ(ReachedAt(ServiceKind::kFtp, "10.0.0.5", {21, 0}), "ftp://10.0.0.5/");
  EXPECT_EQ(ReachedAt(ServiceKind::kMail, "10.0.0.5", {25, 110}),
            "SMTP 10.0.0.5:25  POP3 10.0.0.5:110");
}

}  // namespace
