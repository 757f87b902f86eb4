#pragma once

// What all sockets of one service share.

#include <chrono>
#include <functional>

#include "net/connection_report.h"
#include "net/handler_scope.h"

namespace net {

class ConnectionRequest;
class DrainingConnections;

struct SocketContext {
  EventLoop& loop;
  DrainingConnections& draining;
  HandlerScope::ErrorReport reportError;
  Traffic traffic = {};  // of all its connections so far
  ActivityObserver* observer = nullptr;
  /// Asked before a client gets a slot; everybody may if it is empty.
  std::function<bool(const ConnectionRequest&)> mayConnect = {};
  /// For how long a session may do nothing; for ever if it is empty, or zero.
  std::function<std::chrono::milliseconds()> idleLimit = {};
};

}  // namespace net
