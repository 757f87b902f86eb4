#pragma once

// lvMailUser: the mail users with their passwords, which are shown on purpose: whoever sits here
// gave them out.

#include <wx/listctrl.h>

#include <optional>
#include <string>

#include "mail/mail_accounts.h"

namespace ui {

class MailUserList : public wxListCtrl {
 public:
  explicit MailUserList(wxWindow* parent);

  /// Shows the users of a mail root, a path text, instead of what was shown.
  void LoadMailUsers(const std::string& mailRoot);

  /// The row that is selected, or -1.
  long SelectedRow() const;
  ModMail::MailUser UserAt(long row) const;

 private:
  void ShareWidth();
};

}  // namespace ui
