#pragma once

// What the Web server is compared with. Each serves the folder "wwwroot" with one process that
// accepts, its own defaults otherwise, and no log.

#include "bench/server.h"

namespace bench {

class Nginx : public Server {
 public:
  static constexpr const char* kName = "nginx";
  static bool IsInstalled() { return HasProgram("nginx"); }

  explicit Nginx(const Folder& folder);
};

class Lighttpd : public Server {
 public:
  static constexpr const char* kName = "lighttpd";
  static bool IsInstalled() { return HasProgram("lighttpd"); }

  explicit Lighttpd(const Folder& folder);
};

/// A process per connection, which is for one request. More than nine that wait to be accepted are
/// only heard when they ask again, a second later.
class BusyboxHttpd : public Server {
 public:
  static constexpr const char* kName = "busybox";
  static bool IsInstalled() { return HasProgram("busybox"); }

  explicit BusyboxHttpd(const Folder& folder);
};

}  // namespace bench
