#include "mail/message_structure.h"

#include <algorithm>
#include <utility>

#include "mail/ascii_case.h"

namespace ModMail {
namespace {

constexpr std::size_t kLongestLine = 65536;  // longer ones are read in pieces
constexpr std::size_t kLongestSubject = 65536;
constexpr std::string_view kSubject = "Subject: ";
constexpr std::string_view kEncoding = "Content-Transfer-Encoding:";
constexpr std::string_view kTerminator = ".\r\n";

}  // namespace

void MessageScanner::Take(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view most = bytes.substr(0, kLongestLine - unread_.size());
    const std::string_view piece = most.substr(0, std::min(most.find('\n'), most.size() - 1) + 1);
    bytes.remove_prefix(piece.size());
    const bool isWhole = piece.ends_with('\n') || unread_.size() + piece.size() == kLongestLine;
    if (isWhole && unread_.empty()) {
      TakeLine(piece);
      continue;
    }
    unread_ += piece;
    if (isWhole) TakeLine(std::exchange(unread_, {}));
  }
}

// Only the end of the message shows whether a line "." was its terminator.
void MessageScanner::TakeLine(std::string_view line) {
  if (std::exchange(hasTerminator_, isLineStart_ && line == kTerminator)) ReadLine(kTerminator);
  if (!hasTerminator_) ReadLine(line);
}

void MessageScanner::ReadLine(std::string_view line) {
  const LinePlace place = {position_, position_ + line.size(), position_ - lineEnd_};
  // A CR LF may be divided between two pieces.
  const bool isCut = line == "\n" && endsInReturn_;
  lineEnd_ = line.size() - WithoutLineEnd(line).size() + (isCut ? 1 : 0);
  endsInReturn_ = line.ends_with('\r');
  ReadBoundaries(line);
  if (isLineStart_) ReadLineStart(line, place);
  isLineStart_ = line.ends_with('\n');
  position_ = place.next;
}

void MessageScanner::ReadLineStart(std::string_view line, const LinePlace& place) {
  if (ReadDelimiter(line, place)) return;
  ReadHeaderField(line, place);
  if (region_ == Region::kPartHeader) header_.Add(line);
  if (region_ == Region::kPartText) nested_.TakeLine(line, place);
  if (WithoutLineEnd(line).empty()) EndHeader(place);
}

// Outside of headers, too: the first such line of the message counts.
void MessageScanner::ReadHeaderField(std::string_view line, const LinePlace& place) {
  const bool isFolded = line.starts_with(' ') || line.starts_with('\t');
  if (inSubject_ && isFolded) return ReadSubject(line, place);
  inSubject_ = false;
  if (!hasSubject_ && StartsWithAscii(line, kSubject)) {
    hasSubject_ = true;
    found_.subjectPlace.begin = place.begin + kSubject.size();
    ReadSubject(line.substr(kSubject.size()), place);
  }
  if (!hasEncoding_ && StartsWithAscii(line, kEncoding)) {
    found_.bodyEncoding = Trimmed(line.substr(kEncoding.size()));
    hasEncoding_ = true;
  }
}

// A subject that is too long ends with the last line that fits.
void MessageScanner::ReadSubject(std::string_view piece, const LinePlace& place) {
  inSubject_ = place.next - found_.subjectPlace.begin <= kLongestSubject;
  if (!inSubject_) return;
  found_.subject += piece;
  found_.subjectPlace.end = std::max(place.next - lineEnd_, found_.subjectPlace.begin);
}

void MessageScanner::ReadBoundaries(std::string_view line) {
  constexpr std::string_view kBoundary = "boundary=";
  // Most lines are base64 without this character, and need no closer look.
  while (boundaryCount_ < kMostBoundaries && line.find('=') != std::string_view::npos) {
    const std::size_t found = FindAscii(line, kBoundary);
    if (found == std::string_view::npos) return;
    line.remove_prefix(found + kBoundary.size());
    const std::string_view value = ParameterValue(line);
    // An empty boundary would make every "--" a delimiter.
    if (!value.empty()) boundaries_[boundaryCount_++] = value;
  }
}

bool MessageScanner::ReadDelimiter(std::string_view line, const LinePlace& place) {
  if (!line.starts_with("--")) return false;
  for (std::size_t i = 0; i < boundaryCount_; ++i) {
    const Delimiter delimiter = DelimiterOf(line, boundaries_[i]);
    if (delimiter == Delimiter::kNone) continue;
    EndPart(place.endInFront);
    hasParts_ = true;
    header_.Clear();
    region_ = delimiter == Delimiter::kClosing ? Region::kBetween : Region::kPartHeader;
    return true;
  }
  return false;
}

void MessageScanner::EndHeader(const LinePlace& place) {
  if (region_ == Region::kMessageHeader) {
    region_ = Region::kBetween;
    textBegin_ = place.next;
  } else if (region_ == Region::kPartHeader) {
    region_ = Region::kPartText;
    textBegin_ = place.next;
    if (header_.IsMultipart()) nested_.Enter(header_.Boundary());
  }
}

// A part without an empty line is only a header and is ignored.
void MessageScanner::EndPart(std::uint64_t end) {
  if (region_ != Region::kPartText) return;
  nested_.Leave(end);
  const Stretch text = {textBegin_, std::max(textBegin_, end)};
  if (header_.IsAttachment()) {
    if (found_.attachments.size() == kMostAttachments) return;
    found_.attachments.push_back(
        {std::string(header_.FileName()), std::string(header_.Encoding()), text});
  } else if (!hasBody_ && !header_.IsMultipart()) {
    found_.body = text;
    hasBody_ = true;
    isBodyText_ = header_.IsText();
  }
}

void MessageScanner::ChooseBody() {
  if (!hasParts_) found_.body = {textBegin_, position_};
  if (nested_.Found() && !(hasBody_ && isBodyText_)) found_.body = *nested_.Found();
}

MessageStructure MessageScanner::End() {
  if (!unread_.empty()) TakeLine(std::exchange(unread_, {}));
  EndPart(position_ - lineEnd_);
  ChooseBody();
  found_.subject.resize(static_cast<std::size_t>(found_.subjectPlace.Size()));
  return std::move(found_);
}

MessageStructure ReadStructure(std::string_view text) {
  MessageScanner scanner;
  scanner.Take(text);
  return scanner.End();
}

}  // namespace ModMail
