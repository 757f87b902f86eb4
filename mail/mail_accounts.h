#pragma once

// The accounts of a mail root, as the user administers them: listing, adding, changing and removing
// mailboxes. Plain functions that work on the disk and keep nothing; `mailRoot` is a path text.

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/logs.h"

namespace ModMail {

struct MailUser {
  std::string name;
  std::string password;
};

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

/// The password in the UserInfo.ini of a mailbox; `box` ends in a separator.
std::string ReadMailPassword(std::string_view box);

/// Changes the password of an existing mailbox and nothing else.
std::error_code ChangeMailPassword(std::string_view mailRoot, const MailUser& user);

/// Creates the mailbox if it is missing, and the folders above it, and writes name and password
/// into its UserInfo.ini. A name that cannot be used is an error and changes nothing.
std::error_code SaveMailUser(std::string_view mailRoot, const MailUser& user);

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
