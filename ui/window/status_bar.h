#pragma once

// stbInfo: a panel per service, its ON or OFF picture before its text.

#include <wx/statusbr.h>

#include <array>
#include <string>

#include "core/service.h"

class wxStaticBitmap;

namespace ui {

class StatusBar : public wxStatusBar {
 public:
  explicit StatusBar(wxWindow* parent);

  void SetPanel(core::ServiceKind service, bool on, const std::string& text);

  std::string PanelText(core::ServiceKind service) const;
  bool PanelIsOn(core::ServiceKind service) const { return on_[static_cast<int>(service)]; }

  /// What passes at this moment, behind all else: bytes per second, in the tip all bytes so far.
  void ShowTraffic(const net::Traffic& rate, const net::Traffic& total);
  void ShowNoTraffic();
  std::string TrafficText() const;

  /// A passing remark behind the panels.
  void Remark(const std::string& text);

 private:
  void PlacePictures();

  std::array<wxStaticBitmap*, 3> pictures_;
  std::array<bool, 3> on_ = {};
};

}  // namespace ui
