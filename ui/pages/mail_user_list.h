#pragma once

// lvMailUser: the mail users with their passwords, visible on purpose: the person at this window
// handed them out. Of a password that is kept as a hash only that can be shown.

#include <wx/listctrl.h>

#include <optional>
#include <string>

#include "mail/mail_accounts.h"

namespace ui {

class MailUserList : public wxListCtrl {
 public:
  explicit MailUserList(wxWindow* parent);

  /// Replaces the list by the users of a mail root, a path text.
  void LoadMailUsers(const std::string& mailRoot);

  /// The selected row, or -1.
  long SelectedRow() const;
  ModMail::MailUser UserAt(long row) const;

 private:
  void ShareWidth();
};

}  // namespace ui
