#include "platform/local_addresses.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <string_view>

namespace platform {
namespace {

constexpr ULONG kFlags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;

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

void AddAddressesOf(const IP_ADAPTER_ADDRESSES& adapter, std::vector<std::string>& addresses) {
  for (const auto* each = adapter.FirstUnicastAddress; each != nullptr; each = each->Next) {
    char text[INET_ADDRSTRLEN] = "";
    const auto* address = reinterpret_cast<const sockaddr_in*>(each->Address.lpSockaddr);
    inet_ntop(AF_INET, &address->sin_addr, text, sizeof(text));
    if (!std::string_view(text).starts_with("169.254.")) addresses.emplace_back(text);
  }
}

}  // namespace

std::vector<std::string> LocalAddresses() {
  std::vector<std::string> addresses;
  const std::vector<unsigned char> bytes = Adapters();
  if (bytes.empty()) return addresses;
  const auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(bytes.data());
  for (; adapter != nullptr; adapter = adapter->Next) {
    if (adapter->OperStatus != IfOperStatusUp) continue;
    if (adapter->IfType != IF_TYPE_SOFTWARE_LOOPBACK) AddAddressesOf(*adapter, addresses);
  }
  return addresses;
}

}  // namespace platform
