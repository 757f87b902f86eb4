#pragma once

// A service as seen by service control, whatever its protocol: it starts, stops and reports its
// state. It shows nothing; the view does (core/manager_view.h).

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

/// In display order.
inline constexpr std::array kServices = {ServiceKind::kWeb, ServiceKind::kFtp, ServiceKind::kMail};

/// The index of a service in an array of three.
constexpr std::size_t IndexOf(ServiceKind service) { return static_cast<std::size_t>(service); }

/// The ports of a service; 0 for none. The mail server has two.
struct Ports {
  int first = 0;   // HTTP, FTP or SMTP
  int second = 0;  // POP3

  bool operator==(const Ports&) const = default;
};

/// Why a service did not start.
struct StartFailure {
  std::error_code reason;
  std::int16_t port = 0;  // the port that could not be opened; 0 if the start failed before that
  bool settings = false;  // the start failed because Server.ini cannot be used
};

class Service {
 public:
  virtual ~Service() = default;

  /// Loads the settings and opens the listeners. On failure nothing stays open, the reason is
  /// logged, and Start can be called again at once.
  virtual bool Start() = 0;

  /// Closes the listeners and all connections, and returns once every handler has ended. False if
  /// the system failed to close something.
  virtual bool Stop() = 0;

  virtual bool IsRunning() const = 0;

  /// Reloads the settings, as Start does. False if the service could not start with them.
  virtual bool LoadOptions() = 0;

  /// The domain name as last loaded.
  virtual std::string Domain() const = 0;

  /// The ports that the service is listening on; none while it is stopped.
  virtual Ports PortsInUse() const { return {}; }

  /// The ports of the settings as last loaded, on which it listens after its next start.
  virtual Ports PortsToUse() const { return {}; }

  /// The currently open connections.
  virtual std::vector<net::ConnectionReport> Connections() const { return {}; }

  /// Whether a client could connect for a moment without another losing its place, now or because
  /// the places are given out in turn.
  virtual bool HasRoomForATest() const { return true; }

  /// The bytes of all connections so far, including closed ones.
  virtual net::Traffic TotalTraffic() const { return {}; }

  /// From now on `observer` gets what the connections did, until another takes its place; null for
  /// nobody. It may be set at any time.
  virtual void Observe(net::ActivityObserver* observer) { static_cast<void>(observer); }

  /// Ends the connection that a report names by `protocol` and `slot`, with its data connection.
  /// What was sent still reaches the client. If the slot has changed hands since, the newcomer's
  /// ends; if it is free, nothing happens.
  virtual void Disconnect(const std::string& protocol, int slot) {
    static_cast<void>(protocol);
    static_cast<void>(slot);
  }

  /// The reason of the last start if it failed.
  virtual std::optional<StartFailure> LastFailure() const { return std::nullopt; }

  /// The root directory as last loaded, a path text.
  virtual std::string RootDir() const = 0;
};

}  // namespace core
