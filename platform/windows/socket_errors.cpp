#include "platform/socket_errors.h"

#include <winsock2.h>

namespace platform {

bool IsAddressRefused(const std::error_code& error) {
  return error.value() == WSAEADDRINUSE || error.value() == WSAEADDRNOTAVAIL;
}

bool IsShortage(const std::error_code& error) {
  const int number = error.value();
  return number == WSAEMFILE || number == WSAENOBUFS || number == ERROR_NOT_ENOUGH_MEMORY;
}

}  // namespace platform
