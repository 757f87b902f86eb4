#include "platform/local_networks.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <memory>

namespace platform {
namespace {

std::uint32_t AddressIn(const sockaddr* address) {
  return ntohl(reinterpret_cast<const sockaddr_in*>(address)->sin_addr.s_addr);
}

}  // namespace

std::vector<LocalNetwork> LocalNetworks() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return {};
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, freeifaddrs);
  std::vector<LocalNetwork> networks;
  for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET) continue;
    if ((each->ifa_flags & IFF_UP) == 0 || each->ifa_netmask == nullptr) continue;
    networks.push_back({AddressIn(each->ifa_addr), AddressIn(each->ifa_netmask)});
  }
  return networks;
}

}  // namespace platform
