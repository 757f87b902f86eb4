#include "platform/local_addresses.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <memory>
#include <string_view>

namespace platform {

std::vector<std::string> LocalAddresses() {
  ifaddrs* first = nullptr;
  if (getifaddrs(&first) != 0) return {};
  const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> list(first, freeifaddrs);
  std::vector<std::string> addresses;
  for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
    if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET) continue;
    if ((each->ifa_flags & IFF_UP) == 0 || (each->ifa_flags & IFF_LOOPBACK) != 0) continue;
    char text[INET_ADDRSTRLEN] = "";
    const auto* address = reinterpret_cast<const sockaddr_in*>(each->ifa_addr);
    inet_ntop(AF_INET, &address->sin_addr, text, sizeof(text));
    if (!std::string_view(text).starts_with("169.254.")) addresses.emplace_back(text);
  }
  return addresses;
}

}  // namespace platform
