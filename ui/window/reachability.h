#pragma once

// How others reach the services, as the pages show it: ports, addresses in the network, remarks on
// domain names, and tests of the reach. One test runs at a time, beside everything else; it ends
// with the window, and with its service.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/service.h"
#include "ui/window/manager.h"

namespace core {
class ReachTest;
}

namespace ui {

class Content;

class Reachability {
 public:
  /// Both must outlive this object.
  Reachability(const Manager& manager, Content& content);
  ~Reachability();

  /// Shows the ports in use, whether a restart would change them, how other computers reach the
  /// service, and whether browsers would display its pages.
  void Show(core::ServiceKind service);

  /// Shows whether others know the domain. Reads the hosts file.
  void ShowDomainRemark(core::ServiceKind service);

  /// The addresses of a running service, the likeliest first.
  std::vector<std::string> AddressesOf(core::ServiceKind service) const;

  /// The address to give to somebody, of the first service that runs; none if none does or this
  /// computer is in no network.
  std::optional<std::string> AddressToGive() const;

  /// Shows on the page of the service what stands in the way of others.
  void Test(core::ServiceKind service);

  /// Ends the test of the service, or any, and removes what it found.
  void EndTest(core::ServiceKind service);
  void EndTests();

 private:
  const Manager& manager_;
  Content& content_;
  std::unique_ptr<core::ReachTest> test_;
  std::optional<core::ServiceKind> tested_;  // while the test runs
};

}  // namespace ui
