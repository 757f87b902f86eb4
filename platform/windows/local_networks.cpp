#include "platform/local_networks.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

namespace platform {
namespace {

// The system's table of addresses, within the bytes.
std::vector<unsigned char> AddressTable() {
  ULONG size = 4096;
  std::vector<unsigned char> bytes(size);
  DWORD result = GetIpAddrTable(reinterpret_cast<MIB_IPADDRTABLE*>(bytes.data()), &size, FALSE);
  for (int tries = 0; tries < 5 && result == ERROR_INSUFFICIENT_BUFFER; ++tries) {
    bytes.resize(size);
    result = GetIpAddrTable(reinterpret_cast<MIB_IPADDRTABLE*>(bytes.data()), &size, FALSE);
  }
  if (result != NO_ERROR) bytes.clear();
  return bytes;
}

}  // namespace

std::vector<LocalNetwork> LocalNetworks() {
  const std::vector<unsigned char> bytes = AddressTable();
  if (bytes.empty()) return {};
  const auto* table = reinterpret_cast<const MIB_IPADDRTABLE*>(bytes.data());
  std::vector<LocalNetwork> networks;
  for (DWORD i = 0; i < table->dwNumEntries; ++i) {
    const MIB_IPADDRROW& row = table->table[i];
    // Addresses of interfaces that are down stay in the table.
    if ((row.wType & (MIB_IPADDR_DISCONNECTED | MIB_IPADDR_DELETED)) != 0) continue;
    if (row.dwAddr != 0) networks.push_back({ntohl(row.dwAddr), ntohl(row.dwMask)});
  }
  return networks;
}

}  // namespace platform
