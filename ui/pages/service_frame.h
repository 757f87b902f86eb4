#pragma once

// A service's page: what service control has to say of it, its address, its folder, and buttons for
// what can be done with it. Under what service control says stands what the window adds to it: why
// a start failed, that the folder is missing. Below that is room for what is the service's own: the
// Web folder as a tree, the mail users. Decides nothing; what the buttons do is given to it.

#include <wx/panel.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/service.h"
#include "core/start_diagnosis.h"

class wxBookCtrlBase;
class wxBoxSizer;
class wxButton;
class wxHyperlinkCtrl;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class LivePanel;
struct ServiceLooks;

class ServiceFrame : public wxPanel {
 public:
  struct Actions {
    std::function<void()> start;
    std::function<void()> stop;
    std::function<void()> askDomain;
    std::function<void()> showOptions;
    std::function<void()> openAddress;
    std::function<void()> openRoot;
    std::function<void()> makeRoot;
    std::function<void(const core::Diagnosis&)> remedy;
    std::function<void(const std::string&)> copy;
    std::function<void(const std::vector<std::string>&)> showQrCode;
  };

  ServiceFrame(wxWindow* parent, core::ServiceKind service, Actions actions);

  void SetResult(const std::string& text);
  void SetAddress(const std::string& text);
  void EnableAddress(bool enabled);
  void SetHint(const std::string& text);
  void SetRootDir(const std::string& path);
  void ShowButtons(bool running);
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

  /// The room for what is the service's own, and the parent of what is in it.
  wxBoxSizer* Body() { return body_; }
  wxWindow* BodyParent() { return bodyPage_; }

  /// Names the body and gives it a row for buttons.
  wxBoxSizer* AddBodyHeading(const char* text);
  wxButton* AddBodyButton(wxBoxSizer* heading, const char* name, const char* text,
                          std::function<void()> action);

 private:
  wxSizer* MakeHeader(core::ServiceKind service);
  wxSizer* MakeFacts(core::ServiceKind service, const Actions& actions);
  wxSizer* MakeOutcome(const ServiceLooks& looks, const Actions& actions);
  wxSizer* MakeReason(const Actions& actions);
  wxSizer* MakeRoot(const ServiceLooks& looks, const Actions& actions);
  wxSizer* MakeRootMissing(const Actions& actions);
  wxSizer* MakeReach(core::ServiceKind service, const Actions& actions);
  void ShowReach();
  wxSizer* MakePortNote(const Actions& actions);
  wxWindow* MakeTabs(core::ServiceKind service);
  wxSizer* MakeButtons(core::ServiceKind service, const Actions& actions);

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
