#pragma once

// The menus of the window and of the tray icon. Menus are rebuilt whenever the state of a service
// changes, and contain only the items that apply.

#include <wx/menu.h>

#include <array>
#include <memory>

#include "core/service.h"

namespace ui {

/// The items by their given names. An item is in a menu if FindItem finds its number.
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
  mnuStartAll,
  mnuStopAll,
  mnuViewProblems,
  mnuStartWithSystem,
  mnuProtection,
};

/// Whether each service is running.
using ServiceStates = std::array<bool, 3>;

/// The menu bar of the window, and the pop-up menu of the tray icon.
wxMenuBar* MakeMenuBar(const ServiceStates& running);
std::unique_ptr<wxMenu> MakeTrayMenu(const ServiceStates& running);

/// Marks the item of the page that is shown; pages are counted in the order of the side bar.
void MarkPage(wxMenuBar& bar, std::size_t page);

/// Updates the items of the bar to the state of the services.
void UpdateMenuBar(wxMenuBar& bar, const ServiceStates& running);

}  // namespace ui
