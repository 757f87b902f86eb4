#pragma once

// The card of a service on the overview: its state, the address to give to others, large and ready
// to copy, the address of this computer's own, and the buttons. Before a start and after a failed
// one a hint or the reason has the place of the addresses. Every card has the same rooms, so that
// the buttons of all are in line and do not move. The card decides nothing; it calls the actions.

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/service.h"
#include "core/start_diagnosis.h"
#include "ui/controls/card.h"
#include "ui/controls/link.h"
#include "ui/pages/service_looks.h"

class wxBoxSizer;
class wxButton;
class wxSizer;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class ServiceCard : public Card {
 public:
  struct Actions {
    std::function<void(core::ServiceKind)> start;
    std::function<void(core::ServiceKind)> stop;
    std::function<void(core::ServiceKind)> showPage;
    std::function<void(core::ServiceKind)> openAddress;
    std::function<void(core::ServiceKind)> openRoot;
    std::function<void(core::ServiceKind, const core::Diagnosis&)> follow;
    std::function<void(const std::string&)> giveAddress;
    std::function<void(const std::vector<std::string>&)> showQrCode;
    std::function<void()> makeUploadFolder;
  };

  ServiceCard(wxWindow* parent, core::ServiceKind service, Actions actions);

  void SetState(ServiceState state);
  bool IsRunning() const { return running_; }

  /// The address as service control says it, and a remark on it.
  void SetAddress(const std::string& text);
  void SetRemark(const std::string& text);

  /// The addresses for others, the likeliest first; shown while the service runs.
  void SetReach(const std::vector<std::string>& addresses);

  /// Why the last start failed, with a button for the remedy. None: it did not.
  void SetDiagnosis(const std::optional<core::Diagnosis>& diagnosis);

  /// Warns that every visitor may change files, on the card of the FTP service. True if the card
  /// needs another size.
  bool WarnOfChanges(bool warned);

  /// Fits the addresses into `width` pixels.
  void UseWidth(int width);

 private:
  std::function<void()> Calling(std::function<void(core::ServiceKind)> Actions::*action);
  wxSizer* MakeHeader();
  wxSizer* MakeReach();
  wxSizer* MakeReachButtons();
  wxSizer* MakeOwnAddress();
  void AddButtons(wxBoxSizer& column);
  void AddWarning(wxBoxSizer& column);
  void ShowReach();
  void ShowLines();
  void ShowOtherAddresses();

  const core::ServiceKind service_;
  const ServiceLooks& looks_;
  Actions actions_;
  bool running_ = false;
  std::vector<std::string> reachedAt_;
  std::optional<core::Diagnosis> diagnosis_;
  std::string address_;
  int width_;  // in pixels
  wxStaticBitmap* stateIcon_;
  wxStaticText* state_;
  std::array<wxStaticText*, 2> lines_;  // of the address for others
  wxStaticText* reason_;                // or a hint
  wxButton* copy_;
  wxButton* showQrCode_;
  wxButton* others_;
  wxButton* remedy_;
  Link* ownAddress_;
  wxStaticText* remark_;
  wxButton* start_;
  wxButton* stop_;
  wxStaticText* warning_ = nullptr;
  wxButton* makeUploadFolder_ = nullptr;
};

}  // namespace ui
