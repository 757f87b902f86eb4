#pragma once

// The mailboxes on the disk: a folder per user in the mail root's `User` folder, with the user's
// UserInfo.ini and a file Message_<n>.eml per message, which contains the bytes as they were sent.
// An account exists if its folder does. The store keeps nothing in memory but the session state,
// which it owns and all connections share.
//
// A name from a client is used as a path only if it can name nothing but a folder in `User`
// (IsAccountName); with any other name a user has no mailbox. The empty name is the `User` folder
// itself.
//
// Operations work on the current user unless they say otherwise. An operation that fails throws
// MailFault, which ends the command. More messages than 16 bits can count are such a fault; up to
// that number, the time is linear in the number of files in the mailbox.

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mail_options.h"
#include "mail/mail_session.h"
#include "mail/received_message.h"
#include "mail/unflushed_messages.h"
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
  std::string path = {};
};

class MailboxStore {
 public:
  MailboxStore(const settings::Program& program, const MailOptions& options)
      : program_(program), options_(options), unflushed_(program) {}

  /// That of the session served now.
  MailSessionState& State() { return *state_; }

  /// From now on, `own` is the session's state; null for the one that all share.
  void Serve(MailSessionState* own) { state_ = own == nullptr ? &shared_ : own; }

  /// Makes the text between the first "<" and the next "@" the current user, unless it is empty; in
  /// a line without "<", the text before the first "@". Whether the current user has a mailbox.
  bool MailboxExistsFromAddress(std::string_view commandLine);

  /// Makes the argument of the line the current user. Whether that user has a mailbox.
  bool MailboxExistsFromArgument(std::string_view commandLine);

  /// Whether the argument of the line is the current user's password. A mailbox without any *.ini
  /// refuses every password.
  bool CheckPassword(std::string_view commandLine) const;

  /// The number of messages; their sizes are added to `totalSize`.
  std::int16_t CountMessages(std::int32_t& totalSize) const;

  /// Fills the size table from entry 1 on; entries behind the last message keep their values.
  void ListMessageSizes();

  /// "k name" for each message, on one line whatever the name contains.
  std::vector<std::string> ListMessageIds() const;

  /// Opens the first file that matches Message_<number>*.eml, so number 1 finds Message_10.eml if
  /// there is no Message_1.eml. True and no message if there is no such file; false if the file
  /// cannot be opened.
  bool ReadMessage(int number, std::optional<StoredMessage>& message) const;

  /// Removes Message_<number>.eml at once, if there is one.
  void DeleteMessage(int number) const;

  /// Appends `chunk` to Message_<number>.eml of every recipient, which is created if it is missing.
  /// From 50 on nothing is written, which is no failure. Stops with false at the first file that
  /// cannot be written, and logs the error; later recipients do not get the chunk. The
  /// files of the last chunk are flushed to the disk.
  bool AppendToMailboxes(int number, std::string_view chunk, bool isLast);

  /// Flushes the files that earlier chunks were appended to, under another number or for recipients
  /// that have since been removed. Afterwards everything appended survives a power cut.
  /// False if a file could not be flushed.
  bool FlushMailboxes() { return unflushed_.Flush(); }

  /// Whether an earlier flush has failed with a recipient's message of this number, since this was
  /// last asked.
  bool HasLostSome(int number);

  /// To be flushed whenever it has become much.
  UnflushedMessages& Unflushed() { return unflushed_; }

  /// Whether a recipient's mailbox has a message of this number.
  bool HasMessage(const std::string& recipient, int number) const;

  /// Removes the message of this number from the mailbox of every recipient.
  void RemoveFromMailboxes(int number);

  /// Appends a line to Mail.log.
  void WriteMailLog(std::string_view line) const;

  /// Empties the list of recipients and returns their messages of this number, one per entry.
  std::vector<ReceivedMessage> TakeRecipients(int number);

 private:
  std::string UserFolder() const;
  std::optional<std::string> Box() const;
  void NameUser(std::string_view name);
  bool CurrentUserExists() const;
  std::vector<std::string> FilesInAnyOrder(std::string_view pattern) const;
  std::vector<std::string> FilesMatching(std::string_view pattern) const;
  std::string PathIn(const std::string& recipient, int number) const;
  std::vector<std::int32_t> SizesOf(const std::vector<std::string>& names) const;

  const settings::Program& program_;
  const MailOptions& options_;
  MailSessionState shared_;
  MailSessionState* state_ = &shared_;
  UnflushedMessages unflushed_;
};

/// The name of a message's file.
std::string MessageFileName(int number);

/// The argument of a command: the text between its first blank and its first line end. Empty if
/// either is missing or the line end comes first.
std::string_view CommandArgument(std::string_view commandLine);

}  // namespace ModMail
