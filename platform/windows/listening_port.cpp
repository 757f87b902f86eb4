#include "platform/listening_port.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <filesystem>
#include <vector>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

std::string ProgramOf(DWORD process) {
  const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
  if (handle == nullptr) return {};
  std::wstring path(32768, L'\0');
  auto length = static_cast<DWORD>(path.size());
  if (QueryFullProcessImageNameW(handle, 0, path.data(), &length) == 0) length = 0;
  CloseHandle(handle);
  path.resize(length);
  return NarrowText(std::filesystem::path(path).filename().wstring());
}

// The system's table of listeners as bytes. The table may grow between two calls.
template <class Table>
std::vector<unsigned char> Listeners(ULONG family) {
  std::vector<unsigned char> bytes(sizeof(Table));
  auto size = static_cast<DWORD>(bytes.size());
  DWORD result = ERROR_INSUFFICIENT_BUFFER;
  for (int tries = 0; tries < 5 && result == ERROR_INSUFFICIENT_BUFFER; ++tries) {
    bytes.resize(size);
    result =
        GetExtendedTcpTable(bytes.data(), &size, FALSE, family, TCP_TABLE_OWNER_PID_LISTENER, 0);
  }
  if (result != NO_ERROR) bytes.clear();
  return bytes;
}

template <class Table>
std::optional<PortOwner> OwnerIn(ULONG family, std::uint16_t port) {
  const std::vector<unsigned char> bytes = Listeners<Table>(family);
  if (bytes.empty()) return std::nullopt;
  const auto& table = *reinterpret_cast<const Table*>(bytes.data());
  for (DWORD i = 0; i < table.dwNumEntries; ++i) {
    const auto& row = table.table[i];
    if (ntohs(static_cast<u_short>(row.dwLocalPort)) != port) continue;
    if (row.dwOwningPid == 0) return std::nullopt;  // unknown even to the system
    return PortOwner{static_cast<std::uint32_t>(row.dwOwningPid), ProgramOf(row.dwOwningPid)};
  }
  return std::nullopt;
}

}  // namespace

// Access is denied if another program has exclusive use of the port, or if the system reserves it.
ListenTrouble TroubleOf(const std::error_code& error) {
  const bool taken = error.value() == WSAEADDRINUSE || error.value() == WSAEACCES ||
                     error == std::errc::address_in_use;
  return taken ? ListenTrouble::kPortTaken : ListenTrouble::kOther;
}

std::optional<PortOwner> WhoListensOn(std::uint16_t port) {
  if (const auto owner = OwnerIn<MIB_TCPTABLE_OWNER_PID>(AF_INET, port)) return owner;
  return OwnerIn<MIB_TCP6TABLE_OWNER_PID>(AF_INET6, port);
}

}  // namespace platform
