#pragma once

// What the sockets of a service share, as every service wants it: errors are logged, and clients
// are let in as far as the user allows.

#include "core/protection.h"
#include "core/service_environment.h"
#include "net/event_socket.h"
#include "net/socket_context.h"

namespace core {

/// Both must outlive the sockets.
inline net::SocketContext SocketsOf(const ServiceEnvironment& environment,
                                    net::DrainingConnections& draining) {
  const settings::Program& program = environment.program;
  Protection& protection = environment.protection;
  return {.loop = environment.loop,
          .draining = draining,
          .reportError = [&program](const std::string& error) { program.errors.LogError(error); },
          .mayConnect =
              [&protection](const net::ConnectionRequest& client) {
                return protection.MayConnect(client.Peer());
              }};
}

/// The same for sessions, which may be limited in how long they do nothing.
inline net::SocketContext SessionSocketsOf(const ServiceEnvironment& environment,
                                           net::DrainingConnections& draining) {
  net::SocketContext sockets = SocketsOf(environment, draining);
  const Protection& protection = environment.protection;
  sockets.idleLimit = [&protection] { return protection.IdleLimit(); };
  return sockets;
}

}  // namespace core
