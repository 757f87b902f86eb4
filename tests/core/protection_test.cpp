#include "core/protection.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace core {
namespace {

using Reach = ProtectionOptions::Reach;

constexpr std::uint32_t Address(int a, int b, int c, int d) {
  return static_cast<std::uint32_t>(a) << 24 | static_cast<std::uint32_t>(b << 16 | c << 8 | d);
}

TEST(Protection, LetsInWhoIsAsNearAsTheUserWants) {
  const std::vector<platform::LocalNetwork> networks = {
      {Address(127, 0, 0, 1), Address(255, 0, 0, 0)},
      {Address(192, 168, 1, 5), Address(255, 255, 255, 0)},
      {Address(10, 9, 8, 7), 0}};
  struct Case {
    std::uint32_t address;
    bool isLan;
    bool isLocal;
  };
  const Case cases[] = {
      {Address(127, 0, 0, 1), true, true},        {Address(127, 9, 9, 9), true, true},
      {Address(192, 168, 1, 5), true, true},      {Address(192, 168, 1, 77), true, false},
      {Address(192, 168, 2, 5), false, false},    {Address(10, 9, 8, 7), true, true},
      {Address(10, 9, 8, 8), false, false},       {Address(198, 51, 100, 1), false, false},
      {Address(255, 255, 255, 255), false, false}};
  for (const Case& each : cases) {
    EXPECT_TRUE(IsWithinReach(each.address, Reach::kAll, {}));
    EXPECT_EQ(IsWithinReach(each.address, Reach::kLan, networks), each.isLan) << each.address;
    EXPECT_EQ(IsWithinReach(each.address, Reach::kLocal, networks), each.isLocal) << each.address;
  }
}

TEST(Protection, CountsWhoIsRefused) {
  const test::TemporaryFolder home;
  const settings::Program program(home.Text(), "Tarnwerk");
  Protection protection(program);
  EXPECT_TRUE(protection.MayConnect(Address(198, 51, 100, 1)));
  home.Write("Server.ini", "[Protection]\nReach=local\n");
  protection.Load();
  EXPECT_TRUE(protection.MayConnect(Address(127, 0, 0, 1)));
  EXPECT_FALSE(protection.MayConnect(Address(198, 51, 100, 1)));
  EXPECT_FALSE(protection.MayConnect(Address(198, 51, 100, 2)));
  EXPECT_EQ(protection.RefusedClients(), 2U);
}

TEST(Protection, OfUnknownValuesIsTheStricterOneAndWithoutValuesNone) {
  const test::TemporaryFolder home;
  const settings::Program program(home.Text(), "Tarnwerk");
  EXPECT_EQ(LoadProtection(program), ProtectionOptions());
  home.Write("Server.ini", "[WebServer Options]\nDNS=x\n");
  EXPECT_EQ(LoadProtection(program), ProtectionOptions());
  EXPECT_FALSE(home.Has("RunErr.Log"));
  home.Write("Server.ini",
             "[Protection]\nReach=home\nConfine=yes\nFollowLinks=2\nSignIn=on\nHonest=true\n"
             "MessageLimit=-1\n");
  const ProtectionOptions strict = {Reach::kLocal, true, false, true, true, 25};
  EXPECT_EQ(LoadProtection(program), strict);
  EXPECT_NE(home.Read("RunErr.Log").find("Reach: \"home\""), std::string::npos);
  home.Write("Server.ini", "[protection]\nreach=LAN\nConfine=0\nHonest=1\nMessageLimit=3\n");
  const ProtectionOptions chosen = {Reach::kLan, false, false, false, true, 3};
  EXPECT_EQ(LoadProtection(program), chosen);
}

}  // namespace
}  // namespace core
