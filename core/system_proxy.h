#pragma once

// The user's Internet proxy setting, switched off so that the browser reaches the services
// directly. It is never switched on again: it stays off after the program ends.

#include <cstdint>

namespace core {

class SystemProxy {
 public:
  /// Switches the proxy off if it is on. A setting that cannot be read counts as off.
  void SwitchOff();

  /// Switches it off again at the end, if it was on at the start.
  void KeepOff() const;

 private:
  std::int32_t savedProxyEnable_ = 0;
};

}  // namespace core
