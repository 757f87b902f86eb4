#include "platform/local_addresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

namespace platform {
namespace {

// The interface of the default route with the lowest metric; empty if there is none.
std::string InterfaceThatLeadsOut() {
  std::ifstream routes("/proc/net/route");
  std::string found;
  unsigned long lowest = 0;
  for (std::string line; std::getline(routes, line);) {
    std::istringstream words(line);
    std::string interface, destination, gateway, flags, references, uses, mask;
    unsigned long metric = 0;
    words >> interface >> destination >> gateway >> flags >> references >> uses >> metric >> mask;
    if (!words || destination != "00000000" || mask != "00000000") continue;
    if (!found.empty() && metric >= lowest) continue;
    found = interface;
    lowest = metric;
  }
  return found;
}

}  // namespace

std::vector<LocalAddress> LocalAddresses() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return {};
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, freeifaddrs);
  const std::string out = InterfaceThatLeadsOut();
  std::vector<LocalAddress> addresses;
  for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET) continue;
    if ((each->ifa_flags & IFF_UP) == 0 || (each->ifa_flags & IFF_LOOPBACK) != 0) continue;
    char text[INET_ADDRSTRLEN] = "";
    const auto* address = reinterpret_cast<const sockaddr_in*>(each->ifa_addr);
    inet_ntop(AF_INET, &address->sin_addr, text, sizeof(text));
    if (std::string_view(text).starts_with("169.254.")) continue;
    addresses.push_back({text, each->ifa_name, each->ifa_name == out});
  }
  return addresses;
}

}  // namespace platform
