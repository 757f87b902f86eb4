#pragma once

// What the user can do on the mail page: edit mail users, read and remove their messages, see what
// to type into a mail program.

#include <wx/frame.h>

#include <optional>

#include "files/temporary_folder.h"
#include "mail/mail_accounts.h"
#include "mail/mailbox_view.h"
#include "ui/window/manager.h"

namespace ui {

class Content;

class MailCommands {
 public:
  /// `window` must outlive this object.
  explicit MailCommands(wxFrame& window) : window_(window) {}

  /// Both must be called before any command.
  void ActOn(Content& content) { content_ = &content; }
  void Attach(const Manager& manager) { manager_ = &manager; }

  /// Shows the mail users, and the messages of the selected one or of all.
  void LoadUsers();
  void ShowMessagesOfSelected();

  void AddUser();
  void EditUser();
  void DeleteUser();

  /// What to type into a mail program for the selected user, or for the first.
  void ShowSettings();

  /// To be called when the user has decided whether clients sign in: if they begin to, passwords
  /// are kept as hashes from now on; once they do not, hashed ones must be set anew.
  void AdaptPasswords(bool wantedSignIn, bool wantsSignIn);

  void OpenMessage(const ModMail::MessageSummary& message);
  void RemoveMessage(const ModMail::MessageSummary& message);

 private:
  std::optional<ModMail::MailUser> SelectedOrFirst() const;
  bool Remove(wxWindow& parent, const ModMail::MessageSummary& message, std::size_t count);

  wxFrame& window_;
  Content* content_ = nullptr;
  const Manager* manager_ = nullptr;
  files::TemporaryFolder opened_;  // the copies of attachments that were opened
};

}  // namespace ui
