#pragma once

// The messages of one mailbox or of all, for the list in the window. They are read in pieces; of
// each message the first 16 KiB are searched for its headers, and only of messages that are new or
// have changed. Up to 20,000 messages are kept.

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "files/logs.h"
#include "platform/directory.h"
#include "text/date_time.h"

namespace ModMail {

struct MessageSummary {
  std::string user;
  std::string file;  // its name in the mailbox
  // Decoded, printable and of bounded length.
  std::string subject;
  std::string from;
  text::WallTime date;  // as sent, else that of the file
  platform::FileStamp stamp;

  bool operator==(const MessageSummary&) const = default;
};

class MailboxView {
 public:
  static constexpr std::size_t kBeginning = 16384;
  static constexpr std::size_t kMostMessages = 20000;

  /// `mailRoot`: a path text. An empty `user` stands for all.
  MailboxView(std::string mailRoot, std::string user);

  /// Begins to read everything anew, see Step.
  void Begin();

  /// Whether something may have changed since the last time. Costs a few system calls.
  bool HasChanged() const;

  /// Does the next piece of work, a few milliseconds at most. False once there is none.
  bool Step();

  /// Newest first, as of the last complete reading.
  const std::vector<MessageSummary>& Messages() const { return messages_; }

  /// Whether there are more than are kept.
  bool IsCut() const { return isCut_; }

  bool IsOfAll() const { return user_.empty(); }
  const std::string& MailRoot() const { return mailRoot_; }

 private:
  struct Box {
    std::string user;
    std::string path;
    std::optional<platform::FileStamp> stamp;
  };

  std::string BoxOf(const std::string& user) const;
  void WorkOnce();
  void ReadNames();
  void ReadMessage(const std::string& file);
  void Finish();
  static MessageSummary Read(const Box& box, const std::string& file,
                             const platform::FileStamp& stamp);

  std::string mailRoot_;
  std::string user_;
  std::vector<MessageSummary> messages_;
  std::vector<std::size_t> watched_;  // the messages that were written last, by their indexes
  bool isCut_ = false;
  std::optional<platform::FileStamp> users_;  // the stamp of the folder of mailboxes
  std::vector<Box> boxes_;

  // While reading.
  bool isReading_ = false;
  std::size_t box_ = 0;
  std::optional<platform::DirectoryReader> folder_;
  std::vector<std::string> files_;                      // still to be read
  std::unordered_map<std::string, std::size_t> known_;  // messages_ by user and file
  std::vector<MessageSummary> read_;
};

/// The path text of a message's file.
std::string PathOf(const std::string& mailRoot, const MessageSummary& message);

/// Whether a message in the list is the same file, though perhaps changed.
bool IsSameFile(const MessageSummary& left, const MessageSummary& right);

/// The name that an address shows, or the address if it has none.
std::string NameInAddress(std::string_view address);

/// Removes a message, and the folder with what was unpacked of it. The copies of its attachments in
/// Accessary stay, as after DELE. An error if its file cannot be removed. One that is gone, or has
/// changed since it was listed, is a missing file: the user has not seen what it contains now.
std::error_code RemoveMessage(const std::string& mailRoot, const MessageSummary& message,
                              const files::ErrorLog& errors);

}  // namespace ModMail
