#pragma once

// The accounts of a mail root, as the user administers them: listing, adding, changing and removing
// mailboxes. Plain functions that work on the disk and keep nothing; `mailRoot` is a path text.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/logs.h"
#include "mail/password_hash.h"

namespace ModMail {

struct MailUser {
  std::string name;
  std::string password;   // empty if it is kept as a hash
  bool isHashed = false;  // of what is kept; writing it does not matter
};

/// How a password is written into UserInfo.ini: readable, or so that it can only be checked.
enum class PasswordForm { kPlain, kHashed };

/// The folder that holds the mailboxes, with a separator at its end.
std::string MailUserFolder(std::string_view mailRoot);

/// No file system takes a longer name; clients may send megabytes.
inline constexpr std::size_t kLongestAccountName = 765;

/// Whether `name` is empty or can only name a folder in MailUserFolder. It must not contain what a
/// file name cannot contain, separators above all, and must not be "." or ".." or what a system
/// takes for them.
bool IsAccountName(std::string_view name);

/// Every mailbox with its password, in the order of the directory listing.
std::vector<MailUser> ListMailUsers(std::string_view mailRoot);

/// Their names alone.
std::vector<std::string> MailUserNames(std::string_view mailRoot);

/// The number of messages in a mailbox.
std::size_t MessagesOf(std::string_view mailRoot, std::string_view name);

bool MailUserExists(std::string_view mailRoot, std::string_view name);

/// The plain password in the UserInfo.ini of a mailbox, empty if it is kept as a hash; `box` ends
/// in a separator.
std::string ReadMailPassword(std::string_view box);

/// The password of a mailbox in either form. A user that does not exist has none.
StoredPassword ReadStoredPassword(std::string_view mailRoot, std::string_view name);

/// Changes the password of an existing mailbox and nothing else. Hashing takes tens of
/// milliseconds.
std::error_code ChangeMailPassword(std::string_view mailRoot, const MailUser& user,
                                   PasswordForm form = PasswordForm::kPlain);

struct MailUserFault {
  std::string user;
  std::error_code error;
};

/// Replaces every plain password of a mail root by its hash, one mailbox after another. None if all
/// could be written; otherwise the first that could not, while the others have been. Takes tens of
/// milliseconds per mailbox: where that is too long at once, use ListMailUsers and, piece by piece,
/// ChangeMailPassword.
std::optional<MailUserFault> HashMailPasswords(std::string_view mailRoot);

/// Creates the mailbox if it is missing, and the folders above it, and writes name and password
/// into its UserInfo.ini. A name that cannot be used is an error and changes nothing.
std::error_code SaveMailUser(std::string_view mailRoot, const MailUser& user,
                             PasswordForm form = PasswordForm::kPlain);

/// Removes a mailbox with everything in it. What cannot be deleted stays and is logged. Does
/// nothing if there is no such mailbox.
void RemoveMailUser(std::string_view mailRoot, std::string_view name,
                    const files::ErrorLog& errors);

/// Removes a folder with everything in it, a link alone. What cannot be deleted stays and is
/// logged.
void RemoveFolderWhole(const std::string& folder, const files::ErrorLog& errors);

/// A user name as it is stored: without control characters, characters that a file name cannot
/// contain, and blanks at its ends. "." and ".." become empty.
std::string CleanName(std::string_view text);

/// A password as it is stored: without control characters and blanks at its ends.
std::string CleanPassword(std::string_view text);

}  // namespace ModMail
