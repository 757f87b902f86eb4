#include "core/system_proxy.h"

#include <gtest/gtest.h>

#include "settings/registry.h"
#include "tests/support/user_directories.h"

namespace {

class SystemProxy : public testing::Test {
 protected:
  void SetProxy(std::int32_t value) { Modreg::SetNumber(key_, "ProxyEnable", value); }
  std::int32_t Proxy() { return Modreg::QueryNumber(key_, "ProxyEnable"); }

  test::UserDirectories user_;
  Modreg::Key key_ =
      Modreg::CreateKey(Modreg::Root::kCurrentUser,
                        "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings");
  core::SystemProxy proxy_;
};

TEST_F(SystemProxy, ThatWasOnIsOffAtTheStartAndAtTheEnd) {
  for (const std::int32_t on : {1, -1}) {
    SetProxy(on);
    proxy_.SwitchOff();
    EXPECT_EQ(Proxy(), 0);
    SetProxy(1);
    proxy_.KeepOff();
    EXPECT_EQ(Proxy(), 0);
  }
}

TEST_F(SystemProxy, ThatWasOffIsNotTouchedAtTheEnd) {
  SetProxy(0);
  proxy_.SwitchOff();
  SetProxy(1);
  proxy_.KeepOff();
  EXPECT_EQ(Proxy(), 1);
}

}  // namespace
