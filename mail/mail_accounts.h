#pragma once

// The accounts of a mail root, as the user administers them: listing, adding, changing and removing
// mailboxes. Plain functions on the disk; `mailRoot` is a path text.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "files/logs.h"

namespace ModMail {

struct MailUser {
  std::string name;
  std::string password;
};

/// The folder that holds the mailboxes, with a separator at its end.
std::string MailUserFolder(std::string_view mailRoot);

/// Longer than any file system holds; a client may send megabytes.
inline constexpr std::size_t kLongestAccountName = 765;

/// Whether `name` can name only a folder that lies in MailUserFolder, or is empty: nothing that no
/// file name may hold, a separator above all, not "." or "..", nor what a system takes for these.
bool IsAccountName(std::string_view name);

/// Every mailbox with its password, in the order of the file system.
std::vector<MailUser> ListMailUsers(std::string_view mailRoot);

/// How many messages are in a mailbox.
std::size_t MessagesOf(std::string_view mailRoot, std::string_view name);

bool MailUserExists(std::string_view mailRoot, std::string_view name);

/// The password in the UserInfo.ini of a mailbox; `box` ends in a separator.
std::string ReadMailPassword(std::string_view box);

/// Writes the password of an existing mailbox and nothing else. False if it could not be written.
bool ChangeMailPassword(std::string_view mailRoot, const MailUser& user);

/// Creates the mailbox if it is missing, and the folders above it, and writes name and password
/// into its UserInfo.ini. False if that could not be done or `user` has no usable name.
bool SaveMailUser(std::string_view mailRoot, const MailUser& user);

/// Removes a mailbox with everything in it. What cannot be deleted is told to the error log and
/// stays. Does nothing for a name that names no mailbox.
void RemoveMailUser(std::string_view mailRoot, std::string_view name,
                    const files::ErrorLog& errors);

/// A user name or password as it is kept: without control characters and characters that no file
/// name may hold, and without blanks at its ends. What would be "." or ".." is empty.
std::string CleanText(std::string_view text);

}  // namespace ModMail
