#pragma once

// The addresses at which other computers reach the services, as a user passes them on.

#include <cstdint>
#include <string>

#include "core/service.h"

namespace core {

/// The ports that a service listens on; a mail server has two.
struct ListeningPorts {
  std::uint16_t first = 0;   // HTTP, FTP or SMTP
  std::uint16_t second = 0;  // POP3
};

/// "http://192.168.1.5/", with the port unless it is the usual one.
std::string ReachedAt(ServiceKind service, const std::string& machine, ListeningPorts ports);

/// Whether that is a URL, which a telephone opens.
bool IsReachedByUrl(ServiceKind service);

}  // namespace core
