#pragma once

// The addresses at which other computers reach the services, for the user to pass on.

#include <cstdint>
#include <string>

#include "core/service.h"

namespace core {

/// The ports that a service listens on. The mail server has two.
struct ListeningPorts {
  std::uint16_t first = 0;   // HTTP, FTP or SMTP
  std::uint16_t second = 0;  // POP3
};

/// Like "http://192.168.1.5/", with the port unless it is the usual one.
std::string ReachedAt(ServiceKind service, const std::string& machine, ListeningPorts ports);

/// Whether the address is a URL, which a telephone can open.
bool IsReachedByUrl(ServiceKind service);

}  // namespace core
