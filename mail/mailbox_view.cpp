#include "mail/mailbox_view.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <tuple>
#include <utility>

#include "files/files.h"
#include "mail/ascii_case.h"
#include "mail/decoded_header.h"
#include "mail/header_fields.h"
#include "mail/mail_accounts.h"
#include "mail/part_header.h"
#include "text/path_text.h"
#include "text/printable_text.h"
#include "text/wildcards.h"

namespace ModMail {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kTurn(3);
constexpr std::size_t kEntriesAtOnce = 200;
constexpr std::size_t kLongestValue = 2000;
constexpr std::size_t kLongestShown = 300;
constexpr std::size_t kMostWatched = 100;  // SMTP keeps 49 in a mailbox
constexpr std::string_view kExtension = ".eml";

std::string Shown(std::string_view value) {
  const std::string decoded = DecodedHeader(value.substr(0, kLongestValue));
  return text::Printable(Trimmed(decoded), kLongestShown);
}

std::string Beginning(const std::string& path) {
  std::error_code error;
  platform::File file = files::OpenFile(path, platform::File::Mode::kRead, error);
  if (!file.IsOpen()) return {};
  std::string bytes(MailboxView::kBeginning, '\0');
  bytes.resize(file.Read(bytes.data(), bytes.size(), error));
  return bytes;
}

bool IsMessage(const platform::DirectoryEntry& entry) {
  return !entry.isFolder && !entry.isHidden && text::MatchesWildcard(entry.name, "*.eml");
}

// Messages of the same second by their numbers, of which a longer one is greater.
auto Order(const MessageSummary& message) {
  return std::tuple(message.date, message.file.size(), std::string_view(message.file),
                    std::string_view(message.user));
}

// A separator is in no name.
std::string KeyOf(const std::string& user, const std::string& file) { return user + "\\" + file; }

}  // namespace

std::string PathOf(const std::string& mailRoot, const MessageSummary& message) {
  return MailUserFolder(mailRoot) + KeyOf(message.user, message.file);
}

bool IsSameFile(const MessageSummary& left, const MessageSummary& right) {
  return left.user == right.user && left.file == right.file;
}

std::string NameInAddress(std::string_view address) {
  std::string_view name = Trimmed(address.substr(0, address.find('<')));
  if (name.size() > 1 && name.starts_with('"') && name.ends_with('"')) {
    name = name.substr(1, name.size() - 2);
  }
  return std::string(name.empty() ? address : name);
}

std::error_code RemoveMessage(const std::string& mailRoot, const MessageSummary& message,
                              const files::ErrorLog& errors) {
  const std::string path = PathOf(mailRoot, message);
  if (files::StampOf(path) != message.stamp) {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }
  if (const std::error_code error = files::RemoveFile(path)) return error;
  // Of other files nothing is unpacked.
  if (!StartsWithAscii(message.file, "Message_")) return {};
  RemoveFolderWhole(path.substr(0, path.size() - kExtension.size()), errors);
  return {};
}

MailboxView::MailboxView(std::string mailRoot, std::string user)
    : mailRoot_(std::move(mailRoot)), user_(std::move(user)) {}

std::string MailboxView::BoxOf(const std::string& user) const {
  return ModCommon::AddSlash(MailUserFolder(mailRoot_) + user);
}

void MailboxView::Begin() {
  known_.clear();
  for (std::size_t i = 0; i < messages_.size(); ++i) {
    known_.emplace(KeyOf(messages_[i].user, messages_[i].file), i);
  }
  boxes_.clear();
  users_ = files::StampOf(MailUserFolder(mailRoot_));
  std::vector<std::string> users{user_};
  if (IsOfAll()) users = MailUserNames(mailRoot_);
  for (std::string& user : users) boxes_.push_back({user, BoxOf(user), {}});
  box_ = 0;
  folder_.reset();
  files_.clear();
  read_.clear();
  isCut_ = false;
  isReading_ = true;
}

bool MailboxView::HasChanged() const {
  if (IsOfAll() && files::StampOf(MailUserFolder(mailRoot_)) != users_) return true;
  const auto changed = [](const Box& box) { return files::StampOf(box.path) != box.stamp; };
  if (std::any_of(boxes_.begin(), boxes_.end(), changed)) return true;
  // A message that is being received grows, and its folder stays the same.
  return std::any_of(watched_.begin(), watched_.end(), [this](std::size_t index) {
    const MessageSummary& message = messages_.at(index);
    return files::StampOf(PathOf(mailRoot_, message)) != message.stamp;
  });
}

bool MailboxView::Step() {
  const auto end = steady_clock::now() + kTurn;
  while (isReading_ && steady_clock::now() < end) WorkOnce();
  return isReading_;
}

void MailboxView::WorkOnce() {
  if (box_ == boxes_.size() || isCut_) return Finish();
  if (!files_.empty()) {
    const std::string file = std::exchange(files_.back(), {});
    files_.pop_back();
    return ReadMessage(file);
  }
  ReadNames();
}

void MailboxView::ReadNames() {
  Box& box = boxes_[box_];
  std::error_code error;
  if (!folder_) {
    box.stamp = files::StampOf(box.path);
    folder_.emplace(files::ReadFolder(box.path, error));
  }
  std::vector<platform::DirectoryEntry> entries;
  if (!error) folder_->Read(kEntriesAtOnce, entries, error);
  for (platform::DirectoryEntry& entry : entries) {
    if (IsMessage(entry)) files_.push_back(std::move(entry.name));
  }
  if (!entries.empty()) return;
  folder_.reset();
  ++box_;
}

void MailboxView::ReadMessage(const std::string& file) {
  isCut_ = read_.size() >= kMostMessages;
  if (isCut_) return;
  const Box& box = boxes_[box_];
  const std::optional<platform::FileStamp> stamp = files::StampOf(box.path + file);
  if (!stamp) return;  // collected meanwhile
  const auto known = known_.find(KeyOf(box.user, file));
  const bool isSame = known != known_.end() && messages_[known->second].stamp == *stamp;
  read_.push_back(isSame ? messages_[known->second] : Read(box, file, *stamp));
}

MessageSummary MailboxView::Read(const Box& box, const std::string& file,
                                 const platform::FileStamp& stamp) {
  const std::string header = Beginning(box.path + file);
  MessageSummary message{box.user,
                         file,
                         Shown(HeaderField(header, "Subject")),
                         NameInAddress(Shown(HeaderField(header, "From"))),
                         {},
                         stamp};
  if (const auto date = MailDate(HeaderField(header, "Date"))) {
    message.date = *date;
  } else {
    std::error_code error;
    message.date = files::InspectPath(box.path + file, error).created;
  }
  return message;
}

void MailboxView::Finish() {
  isReading_ = false;
  messages_ = std::exchange(read_, {});
  known_.clear();
  std::sort(messages_.begin(), messages_.end(),
            [](const auto& left, const auto& right) { return Order(left) > Order(right); });
  watched_.resize(messages_.size());
  std::iota(watched_.begin(), watched_.end(), std::size_t{0});
  const std::size_t most = std::min(watched_.size(), kMostWatched);
  std::partial_sort(watched_.begin(), watched_.begin() + static_cast<std::ptrdiff_t>(most),
                    watched_.end(), [this](std::size_t left, std::size_t right) {
                      return messages_[left].stamp.written > messages_[right].stamp.written;
                    });
  watched_.resize(most);
}

}  // namespace ModMail
