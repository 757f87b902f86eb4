#include "platform/socket_options.h"

#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace platform {
namespace {

void Set(NativeSocket socket, int level, int option, int value) {
  setsockopt(static_cast<int>(socket), level, option, &value, sizeof(value));
}

}  // namespace

void ClaimAddress(NativeSocket listener) { Set(listener, SOL_SOCKET, SO_REUSEADDR, 1); }

void PrepareForTraffic(NativeSocket socket) {
  Set(socket, IPPROTO_TCP, TCP_NODELAY, 1);
  Set(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
  Set(socket, IPPROTO_TCP, TCP_KEEPIDLE, 60);
  Set(socket, IPPROTO_TCP, TCP_KEEPINTVL, 15);
  Set(socket, IPPROTO_TCP, TCP_KEEPCNT, 4);
}

bool HasPeerShut(NativeSocket socket) {
  pollfd question = {static_cast<int>(socket), POLLRDHUP, 0};
  return poll(&question, 1, 0) > 0;
}

std::size_t UnconfirmedBytes(NativeSocket socket) {
  int bytes = 0;
  if (ioctl(static_cast<int>(socket), SIOCOUTQ, &bytes) != 0) return 0;
  return static_cast<std::size_t>(bytes);
}

}  // namespace platform
