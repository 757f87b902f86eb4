#pragma once

// What service control knows of a service, whatever protocol it speaks.

#include <optional>
#include <string>
#include <vector>

#include "core/activity.h"

namespace core {

enum class ServiceKind { kWeb, kFtp, kMail };

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
  virtual std::vector<ConnectionReport> Connections() const { return {}; }
  virtual Traffic TotalTraffic() const { return {}; }

  /// Why the last start failed; none if it did not.
  virtual std::optional<StartFailure> LastFailure() const { return std::nullopt; }

  /// The root directory as loaded, a path text.
  virtual std::string RootDir() const = 0;
};

}  // namespace core
