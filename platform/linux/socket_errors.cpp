#include "platform/socket_errors.h"

#include <cerrno>

namespace platform {

bool IsAddressRefused(const std::error_code& error) {
  return error.value() == EADDRINUSE || error.value() == EADDRNOTAVAIL;
}

bool IsShortage(const std::error_code& error) {
  const int number = error.value();
  return number == EMFILE || number == ENFILE || number == ENOBUFS || number == ENOMEM;
}

}  // namespace platform
