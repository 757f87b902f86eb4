#include "platform/local_addresses.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <string_view>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

constexpr ULONG kFlags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST |
                         GAA_FLAG_SKIP_DNS_SERVER | GAA_FLAG_INCLUDE_GATEWAYS;

// The system's list of adapters, linked within the bytes.
std::vector<unsigned char> Adapters() {
  ULONG size = 16384;
  std::vector<unsigned char> bytes;
  ULONG result = ERROR_BUFFER_OVERFLOW;
  for (int tries = 0; tries < 5 && result == ERROR_BUFFER_OVERFLOW; ++tries) {
    bytes.resize(size);
    result = GetAdaptersAddresses(AF_INET, kFlags, nullptr,
                                  reinterpret_cast<IP_ADAPTER_ADDRESSES*>(bytes.data()), &size);
  }
  if (result != NO_ERROR) bytes.clear();
  return bytes;
}

bool IsUp(const IP_ADAPTER_ADDRESSES& adapter) {
  return adapter.OperStatus == IfOperStatusUp && adapter.IfType != IF_TYPE_SOFTWARE_LOOPBACK;
}

// Of those with a gateway, the adapter with the lowest metric; null if there is none.
const IP_ADAPTER_ADDRESSES* AdapterThatLeadsOut(const IP_ADAPTER_ADDRESSES* first) {
  const IP_ADAPTER_ADDRESSES* found = nullptr;
  for (const auto* each = first; each != nullptr; each = each->Next) {
    if (!IsUp(*each) || each->FirstGatewayAddress == nullptr) continue;
    if (found == nullptr || each->Ipv4Metric < found->Ipv4Metric) found = each;
  }
  return found;
}

// The description tells virtual adapters apart, whose names the user may have changed.
std::string NamesOf(const IP_ADAPTER_ADDRESSES& adapter) {
  return NarrowText(adapter.FriendlyName) + " " + NarrowText(adapter.Description);
}

void AddAddressesOf(const IP_ADAPTER_ADDRESSES& adapter, bool leadsOut,
                    std::vector<LocalAddress>& addresses) {
  for (const auto* each = adapter.FirstUnicastAddress; each != nullptr; each = each->Next) {
    char text[INET_ADDRSTRLEN] = "";
    const auto* address = reinterpret_cast<const sockaddr_in*>(each->Address.lpSockaddr);
    inet_ntop(AF_INET, &address->sin_addr, text, sizeof(text));
    if (std::string_view(text).starts_with("169.254.")) continue;
    addresses.push_back({text, NamesOf(adapter), leadsOut});
  }
}

}  // namespace

std::vector<LocalAddress> LocalAddresses() {
  std::vector<LocalAddress> addresses;
  const std::vector<unsigned char> bytes = Adapters();
  if (bytes.empty()) return addresses;
  const auto* first = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(bytes.data());
  const IP_ADAPTER_ADDRESSES* out = AdapterThatLeadsOut(first);
  for (const auto* each = first; each != nullptr; each = each->Next) {
    if (IsUp(*each)) AddAddressesOf(*each, each == out, addresses);
  }
  return addresses;
}

}  // namespace platform
