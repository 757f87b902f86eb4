#pragma once

// The page of a service: the outcome of the last start or stop, the address, the folder and
// buttons. To the texts of service control it adds why a start failed and whether the folder is
// missing, how others reach the service. The rest of the page is specific to the service: the Web
// folder as a tree, the mail users. The page decides nothing; its buttons call ServiceCommands.

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/activity_record.h"
#include "core/manager_view.h"
#include "core/start_diagnosis.h"
#include "ui/controls/link.h"
#include "ui/controls/page.h"
#include "ui/pages/reach_rows.h"
#include "ui/pages/service_looks.h"

class wxBookCtrlBase;
class wxBoxSizer;
class wxButton;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class LatestLog;
class LivePanel;
class RecentPanel;
class ServiceCommands;

class ServiceFrame : public Page {
 public:
  /// `commands` must outlive this page.
  ServiceFrame(wxWindow* parent, core::ServiceKind service, ServiceCommands& commands);

  /// Shows the outcome of a start or stop: result, address, hint and buttons, and why a start
  /// failed.
  void ShowOutcome(const core::Outcome& outcome, const std::optional<core::Diagnosis>& diagnosis);
  void SetAddress(const std::string& text);
  void SetRootDir(const std::string& path);
  void SetState(ServiceState state);

  /// Shows why the last start failed, with a button for the remedy. None hides it.
  void SetDiagnosis(const std::optional<core::Diagnosis>& diagnosis);

  /// Shows that the root directory does not exist, with a button that creates it.
  void SetRootMissing(bool missing);

  /// How others reach the service.
  ReachRows& Reach() { return reach_; }

  /// Selects the next or the previous tab, wrapping around.
  void TurnTabs(bool forward);

  /// Selects the tab of the open connections.
  void ShowLiveTab();

  /// Shows the open connections of the service.
  void ShowConnections(const std::vector<net::ConnectionReport>& connections);

  /// The names of clients' addresses, as far as known.
  void SetHostNames(std::map<std::string, std::string> names);

  /// Shows what clients did lately.
  void ShowRecent(const std::deque<core::ActivityRecord::Entry>& entries, std::uint64_t version);

  /// Shows the latest lines of the log.
  void ShowLog();

  LatestLog& Log() { return *log_; }

  /// Whether the service is running as far as the user can see: the stop button is shown.
  bool ShowsRunning() const;

  bool ShowsAddress() const;

  /// Whether the outcome shown is a failed start.
  bool HasFailed() const { return failed_; }

  /// The sizer for the controls specific to the service, and their parent.
  wxBoxSizer* Body() { return body_; }
  wxWindow* BodyParent() { return bodyPage_; }

  /// Sets the heading of the body and returns a row for buttons.
  wxBoxSizer* AddBodyHeading(const char* text);
  wxButton* AddBodyButton(wxBoxSizer* heading, const char* name, const char* text,
                          std::function<void()> action);

 private:
  void ShowButtons(bool running);
  wxSizer* MakeHeader();
  wxSizer* MakeFacts();
  wxSizer* MakeOutcome(const ServiceLooks& looks);
  wxSizer* MakeReason();
  wxSizer* MakeRoot(const ServiceLooks& looks);
  wxSizer* MakeRootMissing();
  wxWindow* MakeTabs();
  bool IsOnTab(const wxWindow* page) const;
  wxSizer* MakeButtons();

  std::function<void()> Calling(void (ServiceCommands::*command)(core::ServiceKind));

  const core::ServiceKind service_;
  ServiceCommands& commands_;
  bool failed_ = false;
  wxStaticBitmap* state_;
  wxStaticText* result_;
  Link* address_;
  wxStaticText* hint_;
  wxStaticText* reason_;
  wxButton* remedy_;
  std::optional<core::Diagnosis> diagnosis_;
  wxStaticText* rootDir_;
  wxStaticText* rootMissing_;
  wxButton* makeRoot_;
  ReachRows reach_;
  wxButton* start_;
  wxButton* stop_;
  wxBookCtrlBase* tabs_;
  wxPanel* bodyPage_;
  wxBoxSizer* body_;
  LivePanel* live_;
  RecentPanel* recent_;
  LatestLog* log_;
};

}  // namespace ui
