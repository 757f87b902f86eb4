#pragma once

// A service's page: the outcome of the last start or stop, the address, the folder, and buttons.
// Below the texts of service control the window adds its own: why a start failed, that the folder
// is missing. The rest of the page is for what only this service has: the Web folder as a tree, the
// mail users. The page decides nothing; its buttons call ServiceCommands.

#include <wx/panel.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"

class wxBookCtrlBase;
class wxBoxSizer;
class wxButton;
class wxHyperlinkCtrl;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class LivePanel;
class ServiceCommands;
struct ServiceLooks;

class ServiceFrame : public wxPanel {
 public:
  /// `commands` outlives this page.
  ServiceFrame(wxWindow* parent, core::ServiceKind service, ServiceCommands& commands);

  /// What became of a start or stop: result, address, hint and buttons, and why a start failed.
  void ShowOutcome(const core::Outcome& outcome, const std::optional<core::Diagnosis>& diagnosis);
  void SetAddress(const std::string& text);
  void SetRootDir(const std::string& path);
  void SetState(bool on);

  /// Why the last start failed, with a button for what can be done about it; none: not shown.
  void SetDiagnosis(const std::optional<core::Diagnosis>& diagnosis);

  /// Says that the root directory does not exist, with a button that makes it.
  void SetRootMissing(bool missing);

  /// Where the other computers of the network reach the service; none: not shown.
  void SetReach(const std::vector<std::string>& addresses);

  /// Says that browsers show the pages on port 80 only, with a button that opens the options.
  void SetPortNote(bool shown);

  /// The tab after the shown one, or the one before it; round and round.
  void TurnTabs(bool forward);

  /// The service's open connections at this moment.
  void ShowConnections(const std::vector<net::ConnectionReport>& connections);
  LivePanel& Live() { return *live_; }

  /// Whether the service runs as far as the user can see: its stop button is there.
  bool ShowsRunning() const;

  /// Whether the outcome shown is a start that failed.
  bool HasFailed() const { return failed_; }

  /// The room for what is the service's own, and the parent of what is in it.
  wxBoxSizer* Body() { return body_; }
  wxWindow* BodyParent() { return bodyPage_; }

  /// Names the body and gives it a row for buttons.
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
  wxSizer* MakeReach();
  void ShowReach();
  wxSizer* MakePortNote();
  wxWindow* MakeTabs();
  wxSizer* MakeButtons();

  std::function<void()> Calling(void (ServiceCommands::*command)(core::ServiceKind));

  const core::ServiceKind service_;
  ServiceCommands& commands_;
  bool failed_ = false;
  wxStaticBitmap* state_;
  wxStaticText* result_;
  wxHyperlinkCtrl* address_;
  wxStaticText* hint_;
  wxStaticText* reason_;
  wxButton* remedy_;
  std::optional<core::Diagnosis> diagnosis_;
  wxStaticText* rootDir_;
  wxStaticText* rootMissing_;
  wxButton* makeRoot_;
  wxStaticText* reachHeading_;
  wxStaticText* reach_;
  wxButton* copyReach_;
  wxButton* showQrCode_;
  bool hasQrCode_;
  std::vector<std::string> reachedAt_;
  wxStaticText* portNote_;
  wxButton* changePort_;
  wxButton* start_;
  wxButton* stop_;
  wxBookCtrlBase* tabs_;
  wxPanel* bodyPage_;
  wxBoxSizer* body_;
  LivePanel* live_;
};

}  // namespace ui
