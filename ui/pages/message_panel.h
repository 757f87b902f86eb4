#pragma once

// The messages of a mailbox or of all with their buttons, and places for the mail users beside
// them. They are read in pieces, so that a mailbox of any size blocks nothing.

#include <wx/panel.h>
#include <wx/timer.h>

#include <functional>
#include <optional>
#include <string>

#include "mail/mailbox_view.h"

class wxBoxSizer;
class wxButton;
class wxStaticText;

namespace ui {

class MessageList;

class MessagePanel : public wxPanel {
 public:
  struct Actions {
    std::function<void(const ModMail::MessageSummary&)> open;
    std::function<void(const ModMail::MessageSummary&)> remove;
  };

  MessagePanel(wxWindow* parent, Actions actions);

  /// Shows the messages of a user, or of all for an empty name. `mailRoot`: a path text.
  void ShowMailbox(const std::string& mailRoot, const std::string& user);

  /// Reads again what has changed.
  void LookAnew();

  /// The mail users go to the beginning of the lists, a text about them into the second place of
  /// the bottom row, as children of this panel.
  wxBoxSizer* Lists() { return lists_; }
  wxBoxSizer* Bottom() { return bottom_; }

  MessageList* lstMessages;
  wxStaticText* lblMailbox;  // how many all have, or that they are being read
  wxButton* cmdOpenMessage;
  wxButton* cmdRemoveMessage;

 private:
  void Work();
  void OnActivate();
  void EnableFitting();
  void BeginReading();
  std::string CountText() const;

  Actions actions_;
  std::string mailRoot_;
  std::string user_;
  std::optional<ModMail::MailboxView> view_;
  wxTimer timer_;
  wxBoxSizer* lists_;
  wxBoxSizer* bottom_;
};

}  // namespace ui
