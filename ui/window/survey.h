#pragma once

// What the main window finds out by itself while it can be seen: the traffic, the open connections
// and the log of the page that is shown several times a second; folders, addresses and first steps
// every few seconds. Hidden or minimised it finds out nothing. The servers are not involved: they
// keep these numbers anyway.

#include <wx/timer.h>

#include "core/traffic_text.h"
#include "ui/window/manager.h"

namespace ui {

class Content;
class StatusBar;

class Survey {
 public:
  /// The parts of the window outlive this object.
  explicit Survey(StatusBar& status);
  void ShowOn(Content& content) { content_ = &content; }

  /// Nothing is looked at before that.
  void Attach(const Manager& manager);

  /// Starts and stops looking.
  void WatchWhileSeen(bool seen);

  /// Looks at everything at once, if it looks at all.
  void LookAnew();

  void ShowFirstSteps();

  /// How other computers reach the service, and whether browsers would show its pages.
  void ShowReach(core::ServiceKind service);

 private:
  void Look();
  void LookRarely();
  void ShowTraffic();

  Content* content_ = nullptr;
  StatusBar& status_;
  const Manager* manager_ = nullptr;
  wxTimer watch_;  // runs while the window can be seen
  int looks_ = 0;  // since it runs
  core::TrafficRate rate_;
};

}  // namespace ui
