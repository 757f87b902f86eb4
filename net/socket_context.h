#pragma once

// What all sockets of one service share.

#include "net/connection_report.h"
#include "net/handler_scope.h"

namespace net {

class DrainingConnections;

struct SocketContext {
  EventLoop& loop;
  DrainingConnections& draining;
  HandlerScope::ErrorReport reportError;
  Traffic traffic = {};  // of all its connections so far
  ActivityObserver* observer = nullptr;
};

}  // namespace net
