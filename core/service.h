#pragma once

// A service as service control sees it: something that starts, stops and can be asked for its
// state, whatever protocol it speaks. It shows nothing; that is the view's business
// (core/manager_view.h).

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "net/connection_report.h"

namespace core {

enum class ServiceKind { kWeb, kFtp, kMail };

/// In the order in which they are shown.
inline constexpr std::array kServices = {ServiceKind::kWeb, ServiceKind::kFtp, ServiceKind::kMail};

/// The index of a service in an array of three.
constexpr std::size_t IndexOf(ServiceKind service) { return static_cast<std::size_t>(service); }

/// Why a service did not start.
struct StartFailure {
  std::error_code reason;
  std::int16_t port = 0;  // the port that could not be opened; 0 if the start failed earlier
  bool settings = false;  // the start failed earlier because Server.ini cannot be used
};

class Service {
 public:
  virtual ~Service() = default;

  /// Loads the settings and opens the listener or listeners. On failure nothing is left open, the
  /// reason is logged, and Start can be called again at once.
  virtual bool Start() = 0;

  /// Closes the listeners and every connection, and returns once every handler has ended. False if
  /// the system refused to close something.
  virtual bool Stop() = 0;

  virtual bool IsRunning() const = 0;

  /// Reloads the settings, as Start does. False if the service could not start with them.
  virtual bool LoadOptions() = 0;

  /// The domain name as loaded.
  virtual std::string Domain() const = 0;

  /// The open connections at this moment.
  virtual std::vector<net::ConnectionReport> Connections() const { return {}; }

  /// The bytes of all connections so far, closed ones included.
  virtual net::Traffic TotalTraffic() const { return {}; }

  /// Why the last start failed; none if it succeeded.
  virtual std::optional<StartFailure> LastFailure() const { return std::nullopt; }

  /// The root directory as loaded, a path text.
  virtual std::string RootDir() const = 0;
};

}  // namespace core
