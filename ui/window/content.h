#pragma once

// Everything between the menu and the status bar: the side bar, and the four pages it selects from,
// the overview and one per service. Exactly one page is shown. What the buttons do is the business
// of Commands.

#include <wx/panel.h>

#include <array>

#include "ui/pages/service_frame.h"
#include "ui/pages/welcome_frame.h"

namespace ui {

class Commands;
class FolderTree;
class MailUserList;
class Selector;

// In a panel: not every system's frame takes Tab from the side bar on to the page.
class Content : public wxPanel {
 public:
  /// `commands` outlives this panel.
  Content(wxWindow* parent, Commands& commands);

  /// Shows one of the four pages. The focus stays where it is unless that goes out of sight.
  void ShowPage(wxWindow* page);

  /// The least size of `window`, the parent, in which nothing of any page is cut off. Leaves the
  /// last page shown.
  wxSize SizeForEveryPage(wxWindow& window);

  ServiceFrame& FrameOf(core::ServiceKind service) const {
    return *frames_[core::IndexOf(service)];
  }

  /// Turns the tabs of the service's page that is shown, if one is.
  void TurnTabs(bool forward);

  WelcomeFrame* fraWelcome;
  FolderTree* tvWebDir;
  MailUserList* lvMailUser;
  wxStaticText* lblMessages;  // how many the selected mail user has

 private:
  wxWindow* MakeSideBar();
  wxSizer* MakePages();
  WelcomeFrame* MakeWelcomeFrame();
  void FillWebFrame();
  void FillFtpFrame();
  void FillMailFrame();
  std::array<wxWindow*, 4> Pages() const;

  Commands& commands_;
  std::array<Selector*, 4> selectors_;  // in the order of Pages()
  std::array<ServiceFrame*, core::kServices.size()> frames_;
};

}  // namespace ui
