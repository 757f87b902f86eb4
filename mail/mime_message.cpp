#include "mail/mime_message.h"

#include <algorithm>
#include <utility>

#include "mail/decoded_header.h"
#include "mail/header_fields.h"

namespace ModMail {
namespace {

constexpr std::size_t kLongestLine = 65536;  // longer ones are read in pieces
constexpr std::size_t kLongestHeader = 65536;
constexpr std::size_t kLongestValue = 4096;  // of what is shown of a header

std::string Value(std::string_view header, std::string_view name) {
  return DecodedHeader(std::string_view(HeaderField(header, name)).substr(0, kLongestValue));
}

// An empty line ends a header, and so does one that cannot be a part of it: a message typed by hand
// may have none.
bool IsOfHeader(std::string_view line) {
  return line.starts_with(' ') || line.starts_with('\t') || LooksLikeField(line);
}

bool IsText(const std::string& type) { return type == "text/plain" || type == "text/html"; }

}  // namespace

void MimeScanner::Take(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view most = bytes.substr(0, kLongestLine - unread_.size());
    const std::string_view piece = most.substr(0, std::min(most.find('\n'), most.size() - 1) + 1);
    bytes.remove_prefix(piece.size());
    unread_ += piece;
    if (!piece.ends_with('\n') && unread_.size() < kLongestLine) continue;
    TakeLine(unread_);
    unread_.clear();
  }
}

void MimeScanner::TakeLine(std::string_view line) {
  if (!dot_.empty()) {
    const bool isDivider = LooksLikeField(line) && messages_.size() < kMostMessages;
    if (isDivider) EndMessage(dotPlace_.begin);
    if (isDivider) messages_.emplace_back();
    if (!isDivider) ReadLine(dot_, dotPlace_);
    dot_.clear();
  }
  // A CR LF may be divided between two pieces.
  const bool isRest = line == "\n" && endsInReturn_;
  const std::size_t lineEnd = line.size() - WithoutLineEnd(line).size() + (isRest ? 1 : 0);
  const LinePlace place = {position_, position_ + line.size(), position_ - lineEnd_};
  const bool isDot = isLineStart_ && lineEnd > 0 && WithoutLineEnd(line) == ".";
  if (isDot) dot_ = line;
  if (isDot) dotPlace_ = place;
  if (!isDot) ReadLine(line, place);
  isLineStart_ = line.ends_with('\n');
  endsInReturn_ = line.ends_with('\r');
  lineEnd_ = lineEnd;
  position_ = place.next;
}

void MimeScanner::ReadLine(std::string_view line, const LinePlace& place) {
  if (isLineStart_ && ReadDelimiter(line, place)) return;
  if (region_ == Region::kHeader && isLineStart_ && !IsOfHeader(line)) {
    EndHeader(WithoutLineEnd(line).empty() ? place.next : place.begin);
  } else if (region_ == Region::kHeader) {
    header_ += line.substr(0, kLongestHeader - header_.size());
  }
  if (region_ == Region::kText) CountEncoded(line);
}

// A delimiter of an outer multipart ends the inner ones, too.
bool MimeScanner::ReadDelimiter(std::string_view line, const LinePlace& place) {
  if (!line.starts_with("--")) return false;
  for (std::size_t depth = multiparts_.size(); depth > 0; --depth) {
    const Delimiter found = DelimiterOf(line, multiparts_[depth - 1].boundary);
    if (found == Delimiter::kNone) continue;
    EndPart(place.endInFront);
    const bool opens = found == Delimiter::kOpening;
    multiparts_.resize(opens ? depth : depth - 1);
    region_ = opens ? Region::kHeader : Region::kBetween;
    return true;
  }
  return false;
}

void MimeScanner::EndHeader(std::uint64_t next) {
  if (std::exchange(isMessageHeader_, false)) ReadMessageHeader();
  const std::string contentType = HeaderField(header_, "Content-Type");
  std::string type = HeaderWord(contentType);
  if (type.empty() || type == "text") type = "text/plain";
  if (EnterMultipart(type, contentType)) {
    region_ = Region::kBetween;
    header_.clear();
    return;
  }
  const std::string disposition = HeaderField(header_, "Content-Disposition");
  part_.charset = HeaderParameter(contentType, "charset");
  part_.encoding = HeaderWord(HeaderField(header_, "Content-Transfer-Encoding"));
  part_.name = HeaderParameter(disposition, "filename");
  if (part_.name.empty()) part_.name = HeaderParameter(contentType, "name");
  part_.isAttachment =
      !IsText(type) || !part_.name.empty() || HeaderWord(disposition) == "attachment";
  part_.alternative = multiparts_.empty() ? 0 : multiparts_.back().alternative;
  part_.type = std::move(type);
  part_.text.begin = next;
  region_ = Region::kText;
  header_.clear();
}

void MimeScanner::ReadMessageHeader() {
  MimeMessage& message = messages_.back();
  message.from = Value(header_, "From");
  message.to = Value(header_, "To");
  message.copies = Value(header_, "Cc");
  message.subject = Value(header_, "Subject");
  message.date = Value(header_, "Date");
}

bool MimeScanner::EnterMultipart(const std::string& type, const std::string& contentType) {
  if (!type.starts_with("multipart/") || multiparts_.size() >= kMostDepth) return false;
  std::string boundary = HeaderParameter(contentType, "boundary");
  if (boundary.empty()) return false;
  const int outer = multiparts_.empty() ? 0 : multiparts_.back().alternative;
  const bool isAlternative = type == "multipart/alternative";
  multiparts_.push_back({std::move(boundary), isAlternative ? ++alternatives_ : outer});
  return true;
}

void MimeScanner::CountEncoded(std::string_view line) {
  if (part_.encoding != "base64") return;
  std::string_view text = Trimmed(line);
  while (text.ends_with('=')) text.remove_suffix(1);
  encoded_ += text.size();
}

void MimeScanner::EndPart(std::uint64_t end) {
  if (region_ == Region::kHeader && !header_.empty()) EndHeader(end);
  MimePart part = std::exchange(part_, {});
  const std::uint64_t encoded = std::exchange(encoded_, 0);
  if (std::exchange(region_, Region::kBetween) != Region::kText) return;
  part.text.end = std::max(end, part.text.begin);
  part.size = part.encoding == "base64" ? encoded * 3 / 4 : part.text.Size();
  MimeMessage& message = messages_.back();
  message.isCut = message.isCut || message.parts.size() >= kMostParts;
  if (!message.isCut) message.parts.push_back(std::move(part));
}

void MimeScanner::EndMessage(std::uint64_t end) {
  EndPart(end);
  multiparts_.clear();
  header_.clear();
  isMessageHeader_ = true;
  region_ = Region::kHeader;
}

std::vector<MimeMessage> MimeScanner::End() {
  if (!unread_.empty()) TakeLine(std::exchange(unread_, {}));
  EndMessage(dot_.empty() ? position_ : dotPlace_.begin);
  return std::move(messages_);
}

std::vector<MimeMessage> ReadMime(std::string_view file) {
  MimeScanner scanner;
  scanner.Take(file);
  return scanner.End();
}

}  // namespace ModMail
