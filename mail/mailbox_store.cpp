#include "mail/mailbox_store.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "files/files.h"
#include "files/missing.h"
#include "mail/mail_accounts.h"
#include "platform/directory.h"
#include "platform/system_message.h"
#include "platform/text_case.h"
#include "text/path_text.h"
#include "text/printable_text.h"
#include "text/wildcards.h"

namespace ModMail {
namespace {

using platform::File;

constexpr std::string_view kMessagePattern = "*.eml";
constexpr std::string_view kLineEnd = "\r\n";

// Empty if either position was not found.
std::string_view Span(std::string_view text, std::size_t begin, std::size_t end) {
  if (begin == std::string_view::npos || end == std::string_view::npos || end < begin) return {};
  return text.substr(begin, end - begin);
}

// Unlike CommandArgument, ignores a line end before the blank.
std::string_view NameArgument(std::string_view commandLine) {
  const std::size_t blank = commandLine.find(' ');
  if (blank == std::string_view::npos) return {};
  return Span(commandLine, blank + 1, commandLine.find(kLineEnd, blank));
}

std::string_view AddressName(std::string_view commandLine) {
  const std::size_t bracket = commandLine.find('<');
  const std::size_t begin = bracket == std::string_view::npos ? 0 : bracket + 1;
  return Span(commandLine, begin, commandLine.find('@', begin));
}

[[noreturn]] void Fail(const std::string& path, const std::error_code& error) {
  throw MailFault(path + ": " + platform::SystemMessage(error));
}

// The counters have the widths that clients know.
template <class Number>
Number Narrow(std::uint64_t value, const char* what) {
  if (value > static_cast<std::uint64_t>(std::numeric_limits<Number>::max())) {
    throw MailFault(std::string(what) + " is too large: " + std::to_string(value));
  }
  return static_cast<Number>(value);
}

// A client can name a user that no folder can be named after.
bool IsMissing(const std::error_code& error) {
  return files::IsMissing(error) || error == std::errc::not_a_directory ||
         error == std::errc::filename_too_long;
}

// With `flushed`, returns after the file is on the disk.
std::error_code Append(const std::string& path, std::string_view chunk, bool flushed) {
  std::error_code error;
  File file = files::OpenFile(path, File::Mode::kAppend, error);
  if (file.IsOpen()) file.Write(chunk, error);
  if (!error && flushed) file.Flush(error);
  return error;
}

bool IsMessage(const platform::DirectoryEntry& entry, std::string_view pattern) {
  return !entry.isFolder && !entry.isHidden && text::MatchesWildcard(entry.name, pattern);
}

// The order of file systems that sort by name.
void SortByName(std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> order;
  order.reserve(names.size());
  for (std::string& name : names) order.emplace_back(platform::UpperCase(name), std::move(name));
  std::sort(order.begin(), order.end());
  std::transform(order.begin(), order.end(), names.begin(),
                 [](auto& entry) { return std::move(entry.second); });
}

}  // namespace

std::string MessageFileName(int number) { return "Message_" + std::to_string(number) + ".eml"; }

std::string PathOf(const ReceivedMessage& message) {
  return ModCommon::AddSlash(MailUserFolder(message.mailRoot) + message.user) +
         MessageFileName(message.number);
}

std::string_view CommandArgument(std::string_view commandLine) {
  const std::size_t blank = commandLine.find(' ');
  if (blank == std::string_view::npos) return {};
  return Span(commandLine, blank + 1, commandLine.find(kLineEnd));
}

// Accounts

std::string MailboxStore::UserFolder() const { return MailUserFolder(options_.mailRoot); }

// None if the user's name cannot be an account's.
std::optional<std::string> MailboxStore::Box() const {
  if (!IsAccountName(state_->currentUser)) return std::nullopt;
  return ModCommon::AddSlash(UserFolder() + state_->currentUser);
}

bool MailboxStore::CurrentUserExists() const {
  const std::optional<std::string> box = Box();
  return box && files::FolderExists(*box);
}

// A name that is too long for an account is cut, but stays too long.
void MailboxStore::NameUser(std::string_view name) {
  state_->currentUser = name.substr(0, kLongestAccountName + 1);
}

bool MailboxStore::MailboxExistsFromAddress(std::string_view commandLine) {
  const std::string_view name = AddressName(commandLine);
  if (!name.empty()) NameUser(name);
  return CurrentUserExists();
}

bool MailboxStore::MailboxExistsFromArgument(std::string_view commandLine) {
  NameUser(NameArgument(commandLine));
  return CurrentUserExists();
}

bool MailboxStore::CheckPassword(std::string_view commandLine) const {
  const std::optional<std::string> box = Box();
  if (!box || FilesInAnyOrder("*.ini").empty()) return false;
  return ReadMailPassword(*box) == CommandArgument(commandLine);
}

// Reading

std::vector<std::string> MailboxStore::FilesMatching(std::string_view pattern) const {
  std::vector<std::string> names = FilesInAnyOrder(pattern);
  SortByName(names);
  return names;
}

std::vector<std::string> MailboxStore::FilesInAnyOrder(std::string_view pattern) const {
  constexpr std::size_t kStep = 1000;
  const std::optional<std::string> box = Box();
  if (!box) return {};
  std::error_code error;
  std::vector<std::string> names;
  std::vector<platform::DirectoryEntry> entries;
  platform::DirectoryReader folder = files::ReadFolder(*box, error);
  do {
    entries.clear();
    if (!error) folder.Read(kStep, entries, error);
    for (platform::DirectoryEntry& entry : entries) {
      if (IsMessage(entry, pattern)) names.push_back(std::move(entry.name));
    }
    Narrow<std::int16_t>(names.size(), "the number of messages");
  } while (!entries.empty());
  if (error && !IsMissing(error)) Fail(*box, error);
  return names;
}

// In the order of the names.
std::vector<std::int32_t> MailboxStore::SizesOf(const std::vector<std::string>& names) const {
  std::vector<std::int32_t> sizes;
  if (names.empty()) return sizes;
  std::error_code error;
  const std::string box = Box().value();
  const platform::OpenFolder folder = files::OpenFolder(box, error);
  if (error) Fail(box, error);
  sizes.reserve(names.size());
  for (const std::string& name : names) {
    const std::uint64_t size = folder.ReadableSize(name, error);
    if (error) Fail(box + name, error);
    sizes.push_back(Narrow<std::int32_t>(size, "the size of a message"));
  }
  return sizes;
}

std::int16_t MailboxStore::CountMessages(std::int32_t& totalSize) const {
  const std::vector<std::string> names = FilesInAnyOrder(kMessagePattern);
  auto total = static_cast<std::uint64_t>(totalSize);
  for (const std::int32_t size : SizesOf(names)) total += static_cast<std::uint64_t>(size);
  totalSize = Narrow<std::int32_t>(total, "the size of a mailbox");
  return Narrow<std::int16_t>(names.size(), "the number of messages");
}

void MailboxStore::ListMessageSizes() {
  std::size_t entry = 0;
  for (const std::int32_t size : SizesOf(FilesMatching(kMessagePattern))) {
    if (++entry >= state_->messageSizes.size()) {
      throw MailFault("more messages than can be listed");
    }
    state_->messageSizes[entry] = size;
  }
}

std::vector<std::string> MailboxStore::ListMessageIds() const {
  std::vector<std::string> ids = FilesMatching(kMessagePattern);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    ids[i] = std::to_string(i + 1) + " " + text::Printable(ids[i]);
  }
  return ids;
}

bool MailboxStore::ReadMessage(int number, std::optional<StoredMessage>& message) const try {
  const auto names = FilesMatching("Message_" + std::to_string(number) + "*.eml");
  if (names.empty()) return true;
  std::error_code error;
  std::string path = Box().value() + names.front();
  File file = files::OpenFile(path, File::Mode::kRead, error);
  if (!file.IsOpen()) return false;
  const std::uint64_t size = file.Size(error);
  if (error) return false;
  message = StoredMessage{std::move(file), size, std::move(path)};
  return true;
} catch (const MailFault&) {
  return false;
}

void MailboxStore::DeleteMessage(int number) const {
  const std::optional<std::string> box = Box();
  if (!box) return;
  const std::string path = *box + MessageFileName(number);
  const std::error_code error = files::RemoveFile(path);
  if (error && !IsMissing(error) && error != std::errc::is_a_directory) Fail(path, error);
}

// Receiving

bool MailboxStore::AppendToMailboxes(int number, std::string_view chunk, bool isLast) {
  for (const std::string& recipient : state_->MailRecipients) {
    if (recipient.empty()) break;
    if (number >= MailSessionState::kLargestNumber) continue;
    const std::string directory = ModCommon::AddSlash(UserFolder() + recipient);
    const std::string path = directory + MessageFileName(number);
    std::error_code error = Append(path, chunk, isLast);
    if (!error && isLast) error = files::FlushFolder(directory);
    if (error) program_.errors.LogError(path + ": " + platform::SystemMessage(error));
    if (isLast && !error) {
      unflushed_.Forget(path);
    } else {
      unflushed_.Add(path, chunk.size());
    }
    if (error) return false;
  }
  return true;
}

std::string MailboxStore::PathIn(const std::string& recipient, int number) const {
  return ModCommon::AddSlash(UserFolder() + recipient) + MessageFileName(number);
}

bool MailboxStore::HasMessage(const std::string& recipient, int number) const {
  return ModCommon::FileExists(PathIn(recipient, number));
}

bool MailboxStore::HasLostSome(int number) {
  const auto& recipients = state_->MailRecipients;
  return std::any_of(recipients.begin(), recipients.end(), [&](const std::string& recipient) {
    return !recipient.empty() && unflushed_.WasLost(PathIn(recipient, number));
  });
}

void MailboxStore::RemoveFromMailboxes(int number) {
  for (const std::string& recipient : state_->MailRecipients) {
    if (recipient.empty()) break;
    const std::string path = PathIn(recipient, number);
    unflushed_.Forget(path);
    files::RemoveFile(path);
  }
}

std::vector<ReceivedMessage> MailboxStore::TakeRecipients(int number) {
  std::vector<ReceivedMessage> messages;
  for (std::string& recipient : state_->MailRecipients) {
    if (recipient.empty()) break;
    messages.push_back({number, std::exchange(recipient, {}), options_.mailRoot});
  }
  return messages;
}

void MailboxStore::WriteMailLog(std::string_view line) const {
  files::AppendLine(program_.File("Mail.log"), line);
}

}  // namespace ModMail
