#pragma once

// The mailboxes on the disk: a folder per user under the mail root's `User` folder, in it the
// user's UserInfo.ini and a file Message_<n>.eml per message, holding the bytes that the sender
// sent. The folder's existence is what makes an account exist. Nothing is cached but the session
// variables, which the store owns and all connections share.
//
// A name that a client sent is used as a path only if it can name nothing but a folder in `User`
// (IsAccountName); any other is a user who has no mailbox. The empty name is the `User` folder
// itself.
//
// Operations work on the current user unless they say otherwise. Those that cannot do what they are
// for throw MailFault, which ends the command that called them. More messages than 16 bits count
// are such a fault; up to there an operation's time is linear in the number of files in the
// mailbox.

#include <cstdint>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mail_options.h"
#include "mail/mail_session.h"
#include "mail/received_message.h"
#include "platform/file.h"
#include "settings/program.h"

namespace ModMail {

class MailFault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A message being read, and its size when it was opened.
struct StoredMessage {
  platform::File file;
  std::uint64_t size = 0;
};

class MailboxStore {
 public:
  MailboxStore(const settings::Program& program, const MailOptions& options)
      : program_(program), options_(options) {}

  MailSessionState& State() { return state_; }

  /// Makes what stands between the first "<" and the first "@" behind it (without "<": in front of
  /// the first "@") the current user, unless it is empty. Whether the current user exists.
  bool MailboxExistsFromAddress(std::string_view commandLine);

  /// Makes the argument of the line the current user. Whether he exists.
  bool MailboxExistsFromArgument(std::string_view commandLine);

  /// Whether the argument of the line is the current user's password. A mailbox without any *.ini
  /// refuses every password.
  bool CheckPassword(std::string_view commandLine) const;

  /// The number of messages; their sizes are added to `totalSize`.
  std::int16_t CountMessages(std::int32_t& totalSize) const;

  /// Fills the size table from entry 1 on; what is behind the last message stays.
  void ListMessageSizes();

  /// "k name" for each message, on one line whatever the name holds.
  std::vector<std::string> ListMessageIds() const;

  /// Opens the first file that matches Message_<number>*.eml: number 1 finds Message_10.eml where
  /// there is no Message_1.eml. None if there is no such file; false if it cannot be opened.
  bool ReadMessage(int number, std::optional<StoredMessage>& message) const;

  /// Removes Message_<number>.eml at once, if there is one.
  void DeleteMessage(int number) const;

  /// Appends `chunk` to Message_<number>.eml of every recipient, creating it where it is missing.
  /// From 50 on nothing is written, and that is no failure. False at the first file that cannot be
  /// written, whose error is logged; the later recipients then do not get the chunk. The last
  /// chunk's files are flushed to the disk with all that was appended to them before. So is
  /// everything whenever much has gathered, since a flush holds up all others.
  bool AppendToMailboxes(int number, std::string_view chunk, bool isLast);

  /// Flushes what was appended to other files before: under another number, or for recipients that
  /// are no longer there. After it, everything appended would survive a power cut.
  void FlushMailboxes();

  /// A line of Mail.log.
  void WriteMailLog(std::string_view line) const;

  /// Empties the list of recipients, and returns their messages of this number. A user who is in it
  /// twice has two.
  std::vector<ReceivedMessage> TakeRecipients(int number);

 private:
  std::string UserFolder() const;
  std::optional<std::string> Box() const;
  void NameUser(std::string_view name);
  bool CurrentUserExists() const;
  std::vector<std::string> FilesMatching(std::string_view pattern) const;
  std::int32_t SizeOf(const std::string& name) const;

  const settings::Program& program_;
  const MailOptions& options_;
  MailSessionState state_;
  std::set<std::string> unflushed_;  // files appended to since they were flushed
  std::size_t unflushedBytes_ = 0;   // appended since all was flushed
};

/// The name of a message's file.
std::string MessageFileName(int number);

/// The argument of a command: what stands between its first blank and its first line end. Empty if
/// one of them is missing or they stand the other way round.
std::string_view CommandArgument(std::string_view commandLine);

}  // namespace ModMail
