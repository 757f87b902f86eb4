#include "mail/message_structure.h"

#include <algorithm>

#include "core/paths.h"
#include "mail/ascii_case.h"

namespace ModMail {
namespace {

constexpr std::size_t kLongestLine = 65536;    // longer ones are read in pieces
constexpr std::size_t kLongestHeader = 65536;  // what a header holds behind that is not looked at
constexpr std::string_view kSubject = "Subject: ";
constexpr std::string_view kEncoding = "Content-Transfer-Encoding:";
constexpr std::string_view kContentType = "Content-Type:";

std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The line "." with which the client ended the transfer.
std::string_view WithoutTerminator(std::string_view text) {
  constexpr std::string_view kTerminator = ".\r\n";
  if (text == kTerminator || text.ends_with("\n.\r\n")) text.remove_suffix(kTerminator.size());
  return text;
}

// The value that `text` begins with, with its quotation marks or without any.
std::string_view ParameterValue(std::string_view text) {
  if (text.starts_with('"')) {
    text.remove_prefix(1);
    const std::size_t quote = text.find('"');
    return quote != std::string_view::npos ? text.substr(0, quote)
                                           : text.substr(0, text.find_first_of("\r\n"));
  }
  return text.substr(0, text.find_first_of(" \t\r\n;"));
}

// The value of the first line of `header` that begins with `field`.
std::string_view FieldValue(std::string_view header, std::string_view field) {
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find('\n'));
    if (StartsWithAscii(line, field)) return Trimmed(line.substr(field.size()));
    header.remove_prefix(std::min(line.size() + 1, header.size()));
  }
  return {};
}

bool IsMultipart(std::string_view header) {
  return StartsWithAscii(FieldValue(header, kContentType), "multipart/");
}

}  // namespace

MessageScanner::MessageScanner(std::string_view text) : text_(WithoutTerminator(text)) {}

std::string_view MessageScanner::Between(std::size_t begin, std::size_t end) const {
  return begin < end ? text_.substr(begin, end - begin) : std::string_view();
}

bool MessageScanner::Step(std::size_t count) {
  const std::size_t stop = position_ + std::min(count, text_.size() - position_);
  while (position_ < stop) {
    const std::size_t length = LineLength();
    next_ = position_ + length;
    const std::string_view line = text_.substr(position_, length);
    TakeLine(line);
    isLineStart_ = line.ends_with('\n');
    position_ = next_;
  }
  return position_ < text_.size();
}

std::size_t MessageScanner::LineLength() const {
  const std::string_view piece = text_.substr(position_, kLongestLine);
  return std::min(piece.find('\n'), piece.size() - 1) + 1;
}

void MessageScanner::TakeLine(std::string_view line) {
  TakeBoundaries(line);
  if (!isLineStart_) return;
  if (TakeDelimiter(line)) return;
  TakeHeaderField(line);
  if (WithoutLineEnd(line).empty()) EndHeader();
}

// Looked for outside of headers too: what comes first in the message counts.
void MessageScanner::TakeHeaderField(std::string_view line) {
  const bool folded = line.starts_with(' ') || line.starts_with('\t');
  if (inSubject_ && folded) {
    found_.subject = WithoutLineEnd(Between(*subject_, next_));
    return;
  }
  inSubject_ = false;
  if (!subject_ && StartsWithAscii(line, kSubject)) {
    subject_ = position_ + kSubject.size();
    found_.subject = WithoutLineEnd(Between(*subject_, next_));
    inSubject_ = true;
  }
  if (!hasEncoding_ && StartsWithAscii(line, kEncoding)) {
    found_.bodyEncoding = Trimmed(line.substr(kEncoding.size()));
    hasEncoding_ = true;
  }
}

void MessageScanner::TakeBoundaries(std::string_view line) {
  constexpr std::string_view kBoundary = "boundary=";
  // Most lines are base64 and have no such sign.
  while (boundaryCount_ < kMostBoundaries && line.find('=') != std::string_view::npos) {
    const std::size_t found = FindAscii(line, kBoundary);
    if (found == std::string_view::npos) return;
    line.remove_prefix(found + kBoundary.size());
    const std::string_view value = ParameterValue(line);
    // An empty one would make a delimiter of every "--".
    if (!value.empty()) boundaries_[boundaryCount_++] = value;
  }
}

bool MessageScanner::TakeDelimiter(std::string_view line) {
  if (!line.starts_with("--")) return false;
  for (std::size_t i = 0; i < boundaryCount_; ++i) {
    if (!line.substr(2).starts_with(boundaries_[i])) continue;
    const std::string_view rest = Trimmed(line.substr(2 + boundaries_[i].size()));
    const bool closing = rest == "--";
    if (!closing && !rest.empty()) continue;
    EndPart(position_);
    hasParts_ = true;
    closing ? void(region_ = Region::kBetween) : BeginPart();
    return true;
  }
  return false;
}

void MessageScanner::EndHeader() {
  if (region_ == Region::kMessageHeader) {
    region_ = Region::kBetween;
    textBegin_ = next_;
  } else if (region_ == Region::kPartHeader) {
    region_ = Region::kPartText;
    textBegin_ = next_;
    partHeader_ = Between(headerBegin_, position_).substr(0, kLongestHeader);
  }
}

void MessageScanner::BeginPart() {
  region_ = Region::kPartHeader;
  headerBegin_ = next_;
}

// A part that has no empty line is a header alone, and its text is empty.
void MessageScanner::EndPart(std::size_t end) {
  constexpr std::string_view kFileName = "filename=";
  if (region_ != Region::kPartText) return;
  const std::string_view text = WithoutLineEnd(Between(textBegin_, end));
  const std::size_t name = FindAscii(partHeader_, kFileName);
  if (name != std::string_view::npos) {
    if (found_.attachments.size() == kMostAttachments) return;
    found_.attachments.push_back({ParameterValue(partHeader_.substr(name + kFileName.size())),
                                  FieldValue(partHeader_, kEncoding), text});
  } else if (!hasBody_ && !IsMultipart(partHeader_)) {
    found_.body = text;
    hasBody_ = true;
  }
}

MessageStructure MessageScanner::Take() {
  EndPart(text_.size());
  if (!hasParts_) found_.body = text_.substr(textBegin_);
  return std::move(found_);
}

MessageStructure ReadStructure(std::string_view text) {
  MessageScanner scanner(text);
  while (scanner.Step(text.size())) {
  }
  return scanner.Take();
}

}  // namespace ModMail
