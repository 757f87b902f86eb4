#pragma once

// The face of service control: the main window, a console, or a recorder in a test. A view is told
// what became of every start and stop, and decides nothing. The words for it are the same for all
// views (core/service_texts.h).

#include <optional>
#include <string>

#include "core/service.h"

namespace core {

/// What became of a start or stop.
struct Outcome {
  enum class Event { kStarted, kStartFailed, kStopped, kStopFailed };

  ServiceKind service = ServiceKind::kWeb;
  Event event = Event::kStarted;

  /// The service whose labels and buttons show it. The tray menu items and the status panel are
  /// always those of `service`.
  ServiceKind frame = ServiceKind::kWeb;

  std::string address;                 // as it is shown
  std::optional<bool> enableAddress;   // none: leave it as it is
  std::optional<std::string> rootDir;  // a path in the user's own form; none: leave it as it is
  std::optional<StartFailure> failure;

  /// Which of the start and the stop button and menu item is there.
  bool CanBeStopped() const { return event == Event::kStarted || event == Event::kStopFailed; }
};

class ManagerView {
 public:
  virtual ~ManagerView() = default;

  virtual void ShowOutcome(const Outcome& outcome) = 0;
};

}  // namespace core
