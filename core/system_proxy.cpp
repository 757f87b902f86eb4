#include "core/system_proxy.h"

#include "settings/registry.h"

namespace core {
namespace {

constexpr const char* kInternetSettings =
    R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Internet Settings)";
constexpr const char* kValue = "ProxyEnable";

}  // namespace

void SystemProxy::SwitchOff() {
  try {
    savedProxyEnable_ = Modreg::ReadNumber(kInternetSettings, kValue);
  } catch (const Modreg::Error&) {
    savedProxyEnable_ = 0;
  }
  KeepOff();
}

void SystemProxy::KeepOff() const {
  if (savedProxyEnable_ == 0) return;
  try {
    Modreg::WriteNumber(kInternetSettings, kValue, 0);
  } catch (const Modreg::Error&) {
    return;  // the user has no right to change it
  }
}

}  // namespace core
