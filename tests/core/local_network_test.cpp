#include "core/local_network.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;

TEST(LocalNetwork, PutsTheAddressThatOthersMostLikelyReachFirst) {
  const struct {
    const char* what;
    std::vector<platform::LocalAddress> addresses;  // the likely one last
  } kCases[] = {
      {"a container's bridge", {{"172.17.0.1", "docker0"}, {"192.168.1.5", "wlan0", true}}},
      {"one without a way out", {{"192.168.122.1", "virbr0"}, {"192.168.1.5", "enp3s0"}}},
      {"a tunnel that leads out", {{"10.8.0.2", "tun0", true}, {"192.168.1.5", "eth0"}}},
      {"a public address", {{"203.0.113.9", "eth1"}, {"192.168.1.5", "eth0"}}},
      {"no private range", {{"172.32.0.1", "eth1"}, {"172.31.0.1", "eth0"}}},
      {"the way out is another", {{"10.0.0.5", "eth0"}, {"192.168.1.5", "eth1", true}}},
      {"a bridge that leads out", {{"10.0.0.5", "eth0"}, {"192.168.1.5", "br-lan", true}}},
      {"Hyper-V's inner network",
       {{"172.28.0.1", "vEthernet (WSL) Hyper-V Virtual Ethernet Adapter"},
        {"192.168.1.5", "WLAN Intel(R) Wi-Fi 6", true}}},
      {"a private network's adapter",
       {{"10.8.0.2", "Ethernet 3 TAP-Windows Adapter V9", true},
        {"192.168.1.5", "Ethernet Realtek PCIe GbE"}}},
  };
  for (const auto& [what, addresses] : kCases) {
    EXPECT_THAT(core::LikelyFirst(addresses),
                ElementsAre(addresses[1].address, addresses[0].address))
        << what;
  }
  EXPECT_TRUE(core::LikelyFirst({}).empty());
}

TEST(LocalNetwork, SaysOfADomainThatOthersMayNotKnowIt) {
  const test::TemporaryFolder folder;
  folder.Write(
      "hosts",
      "127.0.0.1  home.test\r\n127.0.0.1 192.0.2.5\n#127.0.0.1 off.test\n192.0.2.1 away.test\n");
  const auto remark = [&](const char* name) {
    return core::DomainRemark(name, folder.Text("hosts"));
  };
  EXPECT_EQ(remark("LocalHost"), "只有这台电脑认得");
  EXPECT_EQ(remark("home.test"), "别的电脑未必认得");
  for (const char* name : {"off.test", "away.test", "192.0.2.5", ""}) EXPECT_EQ(remark(name), "");
  EXPECT_TRUE(core::IsThisMachine("127.0.0.2", {}) &&
              core::IsThisMachine("10.0.0.1", {"10.0.0.1"}));
  EXPECT_FALSE(core::IsThisMachine("10.0.0.2", {"10.0.0.1"}));
}

}  // namespace
