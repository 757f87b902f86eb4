#pragma once

// The addresses of the services: those at which other computers reach them, for the user to pass
// on, and those to open here.

#include <string>

#include "core/service.h"

namespace core {

/// Like "http://192.168.1.5/", with the port unless it is the usual one.
std::string ReachedAt(ServiceKind service, const std::string& machine, Ports ports);

/// Whether the address is a URL, which a telephone can open.
bool IsReachedByUrl(ServiceKind service);

/// The URL that opens the service on this computer: with its domain name and always with a port,
/// the one in use or, while it is stopped, the one to use. Empty for the mail server.
std::string LocalUrl(ServiceKind kind, const Service& service);

/// The ports of a service: those in use or, while it is stopped, those to use.
Ports CurrentPorts(const Service& service);

/// Like "80", or "SMTP 25，POP3 110".
std::string PortsText(ServiceKind service, Ports ports);

}  // namespace core
