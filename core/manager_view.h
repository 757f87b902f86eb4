#pragma once

// A view of service control: the main window, a console, or a recorder in a test. It is called with
// the outcome of every start and stop, and decides nothing. All views use the same texts
// (core/service_texts.h).

#include <optional>
#include <string>

#include "core/service.h"

namespace core {

/// The outcome of a start or stop.
struct Outcome {
  enum class Event { kStarted, kStartFailed, kStopped, kStopFailed };

  ServiceKind service = ServiceKind::kWeb;
  Event event = Event::kStarted;

  /// The service whose labels and buttons show the outcome. The tray menu items and the status
  /// panel are always those of `service`.
  ServiceKind frame = ServiceKind::kWeb;

  std::string address;                 // as displayed
  std::optional<bool> enableAddress;   // none: leave unchanged
  std::optional<std::string> rootDir;  // in the user's path notation; none: leave unchanged
  std::optional<StartFailure> failure;

  /// Whether the stop button and menu item are shown, instead of those for starting.
  bool CanBeStopped() const { return event == Event::kStarted || event == Event::kStopFailed; }
};

class ManagerView {
 public:
  virtual ~ManagerView() = default;

  virtual void ShowOutcome(const Outcome& outcome) = 0;
};

}  // namespace core
