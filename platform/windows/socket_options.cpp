#include "platform/socket_options.h"

#include <winsock2.h>

#include <mstcpip.h>

namespace platform {
namespace {

void Set(NativeSocket socket, int level, int option, int value) {
  setsockopt(socket, level, option, reinterpret_cast<const char*>(&value), sizeof(value));
}

}  // namespace

void ClaimAddress(NativeSocket listener) {
  Set(listener, SOL_SOCKET, static_cast<int>(SO_EXCLUSIVEADDRUSE), 1);
}

void PrepareForTraffic(NativeSocket socket) {
  Set(socket, IPPROTO_TCP, TCP_NODELAY, 1);
  tcp_keepalive timing = {1, 60000, 15000};
  DWORD returned = 0;
  WSAIoctl(socket, SIO_KEEPALIVE_VALS, &timing, sizeof(timing), nullptr, 0, &returned, nullptr,
           nullptr);
}

bool HasPeerShut(NativeSocket socket) {
  WSAPOLLFD question = {socket, POLLRDNORM, 0};
  return WSAPoll(&question, 1, 0) > 0 && (question.revents & (POLLHUP | POLLERR)) != 0;
}

std::size_t UnconfirmedBytes(NativeSocket) { return 0; }

}  // namespace platform
