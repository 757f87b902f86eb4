#pragma once

// The first page: buttons for all services, the first steps of a new user, the three services side
// by side, each on a card (ui/pages/service_card.h), who is connected, and how far strangers are
// trusted. The page decides nothing; its buttons call the actions.

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"
#include "core/traffic_history.h"
#include "ui/controls/link.h"
#include "ui/controls/page.h"
#include "ui/pages/first_steps.h"
#include "ui/pages/service_card.h"

class wxButton;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class TrafficCurve;

class WelcomeFrame : public Page {
 public:
  struct Actions {
    ServiceCard::Actions cards;
    std::function<void()> startAll;
    std::function<void()> stopAll;
    std::function<void()> showConnected;
    std::function<void()> changeProtection;
    FirstSteps::Actions firstSteps;
  };

  WelcomeFrame(wxWindow* parent, Actions actions);

  /// Shows the outcome of a start or stop, and in brief why a start failed.
  void ShowOutcome(const core::Outcome& outcome, const std::optional<core::Diagnosis>& diagnosis);

  /// The address as service control says it, and a remark on it.
  void SetAddress(core::ServiceKind service, const std::string& text);
  void SetRemark(core::ServiceKind service, const std::string& text);

  /// The addresses for others, the likeliest first.
  void SetReach(core::ServiceKind service, const std::vector<std::string>& addresses);

  /// Shows why the last start failed, in at most two short lines, in place of the addresses.
  void SetDiagnosis(core::ServiceKind service, const std::optional<core::Diagnosis>& diagnosis);

  /// Shows that every visitor may change files by FTP.
  void WarnOfChanges(bool warned);

  /// Shows who is connected, nobody if `clients` is empty, and the traffic of the last minutes.
  void ShowClients(const std::string& clients,
                   const std::deque<core::TrafficHistory::Sample>& traffic);

  /// Shows how far strangers are trusted, in a line, and which parts of the protection are on.
  void ShowProtection(const std::string& text, const std::string& parts);

  /// Shows how far the first steps are. None hides them.
  void ShowSteps(const std::optional<StepStates>& states);

  wxStaticBitmap* picIcon;

 private:
  void UseWidth();
  void EnableTogether();
  wxSizer* MakeHeader();
  wxSizer* MakeCards();
  wxSizer* MakeNow();
  wxSizer* MakeProtection();
  ServiceCard& CardOf(core::ServiceKind service) { return *cards_[core::IndexOf(service)]; }

  Actions actions_;
  std::array<ServiceCard*, core::kServices.size()> cards_;
  FirstSteps* steps_;
  Link* clients_;
  wxStaticText* protection_;
  wxSizer* protectionRow_;
  TrafficCurve* traffic_;
  wxButton* startAll_;
  wxButton* stopAll_;
};

}  // namespace ui
