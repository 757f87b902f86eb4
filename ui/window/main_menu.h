#pragma once

// The window's menu, which is the tray icon's too. A menu is made anew from the services' state
// whenever that changes: what fits the state is there, what does not is not.

#include <wx/menu.h>

#include <array>
#include <memory>

#include "core/service.h"

namespace ui {

/// The items by their given names. A menu holds an item if FindItem finds its number.
enum MenuItem : int {
  mnuStartWeb = wxID_HIGHEST + 1,
  mnuStopWeb,
  mnuStartFtp,
  mnuStopFtp,
  mnuStartMail,
  mnuStopMail,
  mnuViewWelcome,
  mnuViewWeb,
  mnuViewFtp,
  mnuViewEmail,
  mnuShowFrmMain,
  mnuShowSystemTray,
  mnuOptions,
  mnuHelpTopic,
  mnuTips,
  mnuAbout,
  mnuExit,
  mnubar4,
  mnuServiceBar1,
};

/// Whether each service runs.
using ServiceStates = std::array<bool, 3>;

/// The bar of the window, and the pop-up menu of the tray icon.
wxMenuBar* MakeMenuBar(const ServiceStates& running);
std::unique_ptr<wxMenu> MakeTrayMenu(const ServiceStates& running);

/// Makes the bar's items fit the services anew.
void UpdateMenuBar(wxMenuBar& bar, const ServiceStates& running);

}  // namespace ui
