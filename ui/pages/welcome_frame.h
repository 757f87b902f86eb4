#pragma once

// The first page: the three services side by side, each with its state, its address and a start or
// stop button; a button for all of them; and above them the first steps of a new user. The page
// decides nothing; its buttons call the actions.

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"
#include "core/traffic_history.h"
#include "ui/controls/page.h"
#include "ui/pages/first_steps.h"

class wxBoxSizer;
class wxButton;
class wxHyperlinkCtrl;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class TrafficCurve;

class WelcomeFrame : public Page {
 public:
  struct Actions {
    std::function<void(core::ServiceKind)> start;
    std::function<void(core::ServiceKind)> stop;
    std::function<void(core::ServiceKind)> showPage;
    std::function<void(core::ServiceKind)> openAddress;
    std::function<void(core::ServiceKind)> openRoot;
    std::function<void()> startAll;
    std::function<void()> stopAll;
    FirstSteps::Actions firstSteps;
  };

  WelcomeFrame(wxWindow* parent, Actions actions);

  /// Shows the outcome of a start or stop, and in brief why a start failed.
  void ShowOutcome(const core::Outcome& outcome, const std::optional<core::Diagnosis>& diagnosis);
  void SetAddress(core::ServiceKind service, const std::string& text);

  /// Shows why the last start failed, in at most two short lines, in place of the address.
  void SetReason(core::ServiceKind service, const std::string& text);

  /// Shows who is connected, nobody if `clients` is empty, and the traffic of the last minutes.
  void ShowClients(const std::string& clients,
                   const std::deque<core::TrafficHistory::Sample>& traffic);

  /// Shows the remaining first steps.
  void ShowSteps(const StepsLeft& left);

  wxStaticBitmap* picIcon;

 private:
  struct ServiceCard {
    wxStaticBitmap* stateIcon;
    wxStaticText* state;
    std::array<wxHyperlinkCtrl*, 2> addresses;  // one below the other
    std::string addressText;
    wxStaticText* reason;
    wxButton* start;
    wxButton* stop;
    wxBoxSizer* sizer;
    wxPanel* panel;
    bool running = false;
  };

  void UseWidth();
  void ShowAddressOf(ServiceCard& card);
  void SetRunning(core::ServiceKind service, bool running);
  void EnableTogether();
  wxSizer* MakeHeader();
  wxPanel* MakeCard(core::ServiceKind service);
  wxSizer* MakeNow();
  wxSizer* MakeFooter();
  void ShowState(ServiceCard& card, const char* icon, const char* text, const wxColour& colour);
  ServiceCard& CardOf(core::ServiceKind service);

  Actions actions_;
  std::array<ServiceCard, 3> cards_;
  FirstSteps* steps_;
  wxStaticText* clients_;
  TrafficCurve* traffic_;
  wxButton* startAll_;
  wxButton* stopAll_;
  int addressWidth_;  // in pixels, the space in a card
};

}  // namespace ui
