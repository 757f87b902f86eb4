#pragma once

// The request state of the Web server. There is one for all connections, and it is never cleared: a
// request without a resource is served with the one before, and an access line shows the newest
// request, which may be another client's by then. Both are intended.

#include <string>

namespace ModWeb {

struct WebSession {
  std::string CurrentMethod;    // "GET" or "POST"
  std::string CurrentResource;  // as cut from the request, then rewritten to a name in the Web root
};

}  // namespace ModWeb
