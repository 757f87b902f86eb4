#include "mail/shown_message.h"

#include <algorithm>
#include <array>
#include <utility>

#include "files/files.h"
#include "mail/attachment_name.h"
#include "mail/html_text.h"
#include "text/code_page.h"
#include "text/printable_text.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace ModMail {
namespace {

constexpr std::size_t kLongestShownLine = 2000;
constexpr std::size_t kConvertedAtOnce = 16384;

bool IsShown(const MimePart& part) { return !part.isAttachment; }

// Whether another part says the same as plain text.
bool IsSuperseded(const MimeMessage& message, const MimePart& part) {
  if (part.alternative == 0) return false;
  for (const MimePart& other : message.parts) {
    if (!IsShown(other) || other.alternative != part.alternative) continue;
    if (other.type == "text/plain") return part.type != "text/plain";
  }
  return false;
}

// Where to divide `bytes` so that the first part has at most `most` bytes and divides no character.
// In every set a blank is no part of another character.
std::size_t GoodEnd(std::string_view bytes, std::size_t most) {
  if (bytes.size() <= most) return bytes.size();
  const std::size_t blank = bytes.substr(0, most).find_last_of("\n ");
  if (blank != std::string_view::npos) return blank + 1;
  constexpr std::size_t kLongestCharacter = 4;
  std::size_t end = most;
  while (most - end < kLongestCharacter && text::IsContinuation(bytes[end])) --end;
  return end;
}

// A text is converted line by line or nearly so: what is wrong with one line should not affect all
// the others.
std::string Converted(const std::string& charset, std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = GoodEnd(bytes, kConvertedAtOnce);
    text += text::FromNamed(charset, bytes.substr(0, length));
    bytes.remove_prefix(length);
  }
  return text;
}

std::string_view TakePiece(std::string_view& line) {
  std::size_t length = std::min(line.size(), kLongestShownLine);
  while (length < line.size() && text::IsContinuation(line[length])) ++length;
  const std::string_view piece = line.substr(0, length);
  line.remove_prefix(length);
  return piece;
}

}  // namespace

std::string PrintableLines(std::string_view text) {
  std::string lines;
  lines.reserve(text.size());
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = WithoutLineEnd(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    do {
      lines += text::Printable(text::ReplaceAll(TakePiece(line), "\t", "    "));
      lines += '\n';
    } while (!line.empty());
  }
  return lines;
}

std::string FileNameOf(const MimePart& attachment) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kExtensions = {
      {{"image/jpeg", ".jpg"},
       {"image/png", ".png"},
       {"image/gif", ".gif"},
       {"text/plain", ".txt"},
       {"text/html", ".html"},
       {"text/calendar", ".ics"},
       {"application/pdf", ".pdf"},
       {"message/rfc822", ".eml"}}};
  if (!attachment.name.empty()) return HarmlessFileName(text::Printable(attachment.name));
  for (const auto& [type, extension] : kExtensions) {
    if (type == attachment.type) return "附件" + std::string(extension);
  }
  return "附件";
}

ShownMessage::ShownMessage(std::string_view path)
    : file_(files::OpenFile(path, platform::File::Mode::kRead, error_)),
      scanned_(file_, {0, file_.SizeWhenOpened()}) {}

bool ShownMessage::Step() {
  if (!IsGood()) return false;
  if (!isScanned_) {
    Scan();
    return IsGood();
  }
  if (texts_.empty()) return false;
  ReadText();
  return IsGood() && !texts_.empty();
}

void ShownMessage::Scan() {
  const std::string_view piece = scanned_.Next(error_);
  if (!piece.empty()) return scanner_.Take(piece);
  if (error_) return;
  messages_ = scanner_.End();
  isScanned_ = true;
  Choose(0);
}

void ShownMessage::Choose(std::size_t index) {
  chosen_ = index;
  texts_.clear();
  reader_.reset();
  bytes_.clear();
  text_.clear();
  read_ = 0;
  isTextCut_ = false;
  for (const MimePart& part : Message().parts) {
    if (IsShown(part) && !IsSuperseded(Message(), part)) texts_.push_back(part);
  }
  std::reverse(texts_.begin(), texts_.end());
}

void ShownMessage::ReadText() {
  if (!reader_) reader_.emplace(file_, texts_.back());
  const bool goesOn = reader_->Next(bytes_, error_);
  const bool isFull = read_ + bytes_.size() > kMostText;
  if (goesOn && !isFull) return;
  isTextCut_ = isFull;
  if (isFull) bytes_.resize(GoodEnd(bytes_, kMostText - read_));
  FinishText();
  if (isFull) texts_.clear();
}

void ShownMessage::FinishText() {
  read_ += bytes_.size();
  std::string text = Converted(texts_.back().charset, std::exchange(bytes_, {}));
  if (texts_.back().type == "text/html") text = TextOfHtml(text);
  if (!text_.empty() && !text.empty()) text_ += '\n';
  text_ += PrintableLines(text);
  texts_.pop_back();
  reader_.reset();
}

std::vector<MimePart> ShownMessage::Attachments() const {
  std::vector<MimePart> attachments;
  for (const MimePart& part : Message().parts) {
    if (!IsShown(part)) attachments.push_back(part);
  }
  return attachments;
}

}  // namespace ModMail
