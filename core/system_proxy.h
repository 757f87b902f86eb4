#pragma once

// The user's Internet proxy, which is switched off so that the browser reaches the services
// directly when it opens their addresses. It is not switched on again: it stays off after the
// program's end.

#include <cstdint>

namespace core {

class SystemProxy {
 public:
  /// Switches the proxy off if it is on. One that cannot be asked counts as off.
  void SwitchOff();

  /// The same once more at the end, if it was on at the start.
  void KeepOff() const;

 private:
  std::int32_t savedProxyEnable_ = 0;
};

}  // namespace core
