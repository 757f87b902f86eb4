#pragma once

// lstMessages: the messages of one mail user or of all, newest first. A virtual list, so their
// number costs nothing.

#include <wx/listctrl.h>

#include <string>
#include <vector>

#include "mail/mailbox_view.h"

namespace ui {

class MessageList : public wxListCtrl {
 public:
  static constexpr int kColumns = 5;  // subject, sender, recipient, date, size

  explicit MessageList(wxWindow* parent);

  /// The selected message stays selected, and the list where it was scrolled to.
  void ShowMessages(std::vector<ModMail::MessageSummary> messages);

  /// The column with the recipients has no width while all messages are one user's.
  void ShowRecipients(bool shown);

  /// Null if none is selected.
  const ModMail::MessageSummary* Selected() const;

 private:
  wxString OnGetItemText(long item, long column) const override;
  void ShareWidth();

  std::vector<ModMail::MessageSummary> messages_;
  bool showsRecipients_ = true;
};

}  // namespace ui
