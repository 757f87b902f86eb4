#pragma once

// Everything between the menu and the status bar: the side bar and the five pages that it selects,
// the overview, one per service, and the error log. Exactly one page is visible. Commands does what
// the buttons ask for.

#include <wx/panel.h>

#include <array>
#include <functional>

#include "ui/pages/service_frame.h"
#include "ui/pages/welcome_frame.h"

namespace ui {

class Commands;
class MailUserList;
class MessagePanel;
class ProblemsFrame;
class Selector;
class SharedFolder;
class UploadNote;

// A panel: in a frame, some systems do not move the focus from the side bar to the page with Tab.
class Content : public wxPanel {
 public:
  /// `commands` must outlive this panel.
  Content(wxWindow* parent, Commands& commands);

  /// Shows one of the pages. Moves the focus only if it would become invisible.
  void ShowPage(wxWindow* page);

  /// Called with the index of the page that is now shown.
  std::function<void(std::size_t)> onPage;

  /// The size at which no page scrolls.
  wxSize SizeForEveryPage() const;

  ServiceFrame& FrameOf(core::ServiceKind service) const {
    return *frames_[core::IndexOf(service)];
  }

  /// The folder of the Web or the FTP service.
  SharedFolder& FolderOf(core::ServiceKind service) const {
    return service == core::ServiceKind::kWeb ? *webFolder : *ftpFolder;
  }

  /// Shows how many lines of the error log the user has not seen. Empty hides that.
  void ShowUnseenProblems(const std::string& count);

  /// Selects the next or previous tab of the visible service page, if any.
  void TurnTabs(bool forward);

  WelcomeFrame* fraWelcome;
  ProblemsFrame* fraProblems;
  SharedFolder* webFolder;
  SharedFolder* ftpFolder;
  UploadNote* uploadNote;
  MailUserList* lvMailUser;
  wxStaticText* lblMessages;  // the messages of the selected mail user
  MessagePanel* messages;

 private:
  wxWindow* MakeSideBar();
  wxSizer* MakePages();
  WelcomeFrame* MakeWelcomeFrame();
  void AddFolderButtons(core::ServiceKind service, wxBoxSizer* heading);
  void FillWebFrame();
  void FillFtpFrame();
  void AddFtpVirtualDirectories(wxBoxSizer* heading);
  void FillMailFrame();
  void MakeMailUserList();
  std::array<Page*, 5> Pages() const;

  Commands& commands_;
  wxWindow* sideBar_;
  std::array<Selector*, 5> selectors_;  // in the order of Pages()
  std::array<ServiceFrame*, core::kServices.size()> frames_;
};

}  // namespace ui
