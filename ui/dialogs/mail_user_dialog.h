#pragma once

// Adds a mail user or changes a password. For editing, whoever opens it sets its title and fills
// txtUser and txtPass; after wxID_OK the list of users has to be shown anew. Passwords are shown in
// plain text, as in that list. Where users have to sign in, they are saved as hashes.

#include <wx/dialog.h>

#include "mail/mail_server.h"
#include "settings/program.h"

class wxButton;
class wxTextCtrl;

namespace ui {

class frmEmailUsers : public wxDialog {
 public:
  frmEmailUsers(wxWindow* parent, const settings::Program& program, ModMail::MailServer& server);

  wxTextCtrl* txtUser;
  wxTextCtrl* txtPass;
  wxButton* OKButton;
  wxButton* CancelButton;

 private:
  void OnEnterInUser();
  void OnEnterInPass();
  void OnConfirm();
  void TellUnsaved(const std::string& name, const std::error_code& error);
  void Refuse(const char* text, wxTextCtrl* field);

  const settings::Program& program_;
  ModMail::MailServer& server_;
};

}  // namespace ui
