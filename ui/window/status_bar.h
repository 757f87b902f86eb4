#pragma once

// stbInfo: a panel per service with an ON or OFF picture and its status, then a temporary remark
// and the current traffic.

#include <wx/statusbr.h>
#include <wx/timer.h>

#include <array>
#include <string>
#include <string_view>

#include "core/service.h"

class wxStaticBitmap;

namespace ui {

class StatusBar : public wxStatusBar {
 public:
  explicit StatusBar(wxWindow* parent);

  /// `state`: "ON" or "OFF"; `service`: "WEB", "FTP" or "MAIL". Case does not matter.
  void UpdateServiceStatus(std::string_view state, const std::string& text,
                           std::string_view service);

  /// Replaces the OFF picture by that of a failed start until the next update.
  void MarkFailed(core::ServiceKind service);

  std::string PanelText(core::ServiceKind service) const;
  bool PanelIsOn(core::ServiceKind service) const { return on_[core::IndexOf(service)]; }

  /// Shows the bytes per second, and in the tool tip the total.
  void ShowTraffic(const net::Traffic& rate, const net::Traffic& total);
  void ShowNoTraffic();
  std::string TrafficText() const;

  /// Shows a remark for some seconds, in place of the traffic if it is long.
  void Remark(const std::string& text);

 private:
  void ShowWidths(bool withTraffic);
  void SetPanel(core::ServiceKind service, bool on, const std::string& text);
  void PlacePictures();

  std::array<wxStaticBitmap*, 3> pictures_;
  std::array<bool, 3> on_ = {};
  std::array<int, 8> widths_;  // of the fields; negative shares the rest
  wxTimer remark_;             // runs while a remark is shown
};

}  // namespace ui
