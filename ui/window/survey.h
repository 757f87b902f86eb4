#pragma once

// What the main window checks periodically while it is visible: traffic, open connections and the
// log of the current page several times a second; folders, addresses, first steps and the size of
// the error log every few seconds. While hidden or minimised it only looks who is connected, and
// what came from clients. The servers keep these numbers anyway.

#include <wx/timer.h>

#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "core/activity_news.h"
#include "core/traffic_history.h"
#include "core/traffic_text.h"
#include "ui/window/manager.h"
#include "ui/window/reachability.h"
#include "ui/window/unseen_problems.h"

namespace ui {

class Content;
class StatusBar;

class Survey {
 public:
  /// All parts of the window must outlive this object.
  explicit Survey(StatusBar& status);
  void ShowOn(Content& content) { content_ = &content; }

  /// Must be called before checking starts.
  void Attach(const Manager& manager);

  /// Starts or stops checking.
  void WatchWhileSeen(bool seen);

  /// Called with whether any client is connected, every few seconds also while nothing is seen.
  void OnConnected(std::function<void(bool)> handler) { onConnected_ = std::move(handler); }

  /// Called with what came from clients, likewise.
  void OnNews(std::function<void(const std::string&)> handler) { onNews_ = std::move(handler); }

  /// Checks everything now, unless stopped.
  void LookAnew();

  /// Shows how far the first steps are, how far strangers are trusted, and whether visitors may
  /// change files anywhere.
  void ShowFirstSteps();

  /// Ends what runs beside the checks, so that the window can go.
  void End();

  /// How others reach the services. Only after Attach.
  Reachability& Reach() { return *reach_; }

 private:
  void Look();
  void LookRarely();
  void ShowTraffic();
  void LookAtClients();
  void LookForVisitors(const std::vector<net::ConnectionReport>& open);

  Content* content_ = nullptr;
  StatusBar& status_;
  const Manager* manager_ = nullptr;
  wxTimer watch_;    // runs while the window is visible
  wxTimer clients_;  // always runs
  std::function<void(bool)> onConnected_;
  core::ActivityNews news_;
  std::function<void(const std::string&)> onNews_;
  std::optional<UnseenProblems> unseen_;
  std::optional<Reachability> reach_;
  std::array<std::uint64_t, core::kServices.size()> seenVersions_ = {};  // of the record
  int looks_ = 0;  // since the timer was started
  core::TrafficRate rate_;
  core::TrafficHistory history_;
};

}  // namespace ui
