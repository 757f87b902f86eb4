#pragma once

// What service control knows of a service, whatever protocol it speaks.

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "net/connection_report.h"

namespace core {

enum class ServiceKind { kWeb, kFtp, kMail };

/// Why a service did not start.
struct StartFailure {
  std::error_code reason;
  std::int16_t port = 0;  // that was to be listened on; 0 if it did not come to that
  bool settings = false;  // it did not come to that because Server.ini cannot be used
};

class Service {
 public:
  virtual ~Service() = default;

  /// Loads the settings and opens the listener or listeners. On failure nothing is left open and
  /// the reason is in the error log; it can be tried again at once.
  virtual bool Start() = 0;

  /// Closes the listeners and every connection, ends every handler, and only then returns. False if
  /// the system refused to close something.
  virtual bool Stop() = 0;

  virtual bool IsRunning() const = 0;

  /// Reads the settings anew, as Start does. False if the service could not start with them.
  virtual bool LoadOptions() = 0;

  /// The domain name as loaded.
  virtual std::string Domain() const = 0;

  /// Its open connections at this moment, and the bytes of all of them, closed ones too.
  virtual std::vector<net::ConnectionReport> Connections() const { return {}; }
  virtual net::Traffic TotalTraffic() const { return {}; }

  /// Why the last start failed; none if it did not.
  virtual std::optional<StartFailure> LastFailure() const { return std::nullopt; }

  /// The root directory as loaded, a path text.
  virtual std::string RootDir() const = 0;
};

}  // namespace core
