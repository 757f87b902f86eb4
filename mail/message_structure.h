#pragma once

// Finds subject, body and attachments in a received message. It reads lines that end in CR LF or
// LF, and knows just enough of MIME to divide the messages of today's mail programs:
//
// - A line that begins with "--" and a boundary begins a part, or ends the last part if another
// "--"
//   follows. The line end before it belongs to it and not to the part.
// - A boundary is the value after "boundary=", anywhere in the message; only the first two count.
// - A part's header ends at its first empty line. A part with "filename=" in its header is an
//   attachment; only the first ten count.
// - The body is the first part that is neither an attachment nor a multipart. Without parts it is
//   everything after the message's header, or the whole message if it has no empty line.
// - If there is no such part, or its type is not a text, the body is the first text in a multipart
//   whose own boundary does not count (mail/nested_text.h), if there is one.
// - The first "Content-Transfer-Encoding:" line of the whole message applies to the body, whichever
//   part the line is in; an attachment has its own.
// - The line "." that ended the transfer belongs to no part.
//
// Any bytes are accepted. The time is linear in their number and the memory is bounded: of lines,
// headers and the subject, 64 KiB each are used.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mail/nested_text.h"
#include "mail/part_header.h"
#include "mail/stretch.h"

namespace ModMail {

struct Attachment {
  std::string name;      // still encoded, without quotation marks
  std::string encoding;  // empty if the part names none
  Stretch text;
};

struct MessageStructure {
  /// The value of the first "Subject: ", folded lines included, and its position.
  std::string subject;
  Stretch subjectPlace;
  /// Empty if the message names none.
  std::string bodyEncoding;
  Stretch body;
  std::vector<Attachment> attachments;
};

/// Reads a message piece by piece. The result does not depend on where it is cut.
class MessageScanner {
 public:
  static constexpr std::size_t kMostBoundaries = 2;
  static constexpr std::size_t kMostAttachments = 10;

  /// The next bytes of the message.
  void Take(std::string_view bytes);

  /// The result, after the whole message was passed to Take.
  MessageStructure End();

 private:
  enum class Region { kMessageHeader, kBetween, kPartHeader, kPartText };

  void TakeLine(std::string_view line);
  void ReadLine(std::string_view line);
  void ReadLineStart(std::string_view line, const LinePlace& place);
  void ReadHeaderField(std::string_view line, const LinePlace& place);
  void ReadSubject(std::string_view piece, const LinePlace& place);
  void ReadBoundaries(std::string_view line);
  bool ReadDelimiter(std::string_view line, const LinePlace& place);
  void EndHeader(const LinePlace& place);
  void EndPart(std::uint64_t end);
  void ChooseBody();

  std::string unread_;          // the beginning of a line whose end is still missing
  bool hasTerminator_ = false;  // the last line may be the one that ended the transfer
  bool isLineStart_ = true;     // a very long line is read in pieces
  bool endsInReturn_ = false;   // such a piece
  std::uint64_t position_ = 0;
  std::size_t lineEnd_ = 0;  // bytes of the line end before the position

  MessageStructure found_;
  std::array<std::string, kMostBoundaries> boundaries_;
  std::size_t boundaryCount_ = 0;
  bool hasSubject_ = false;
  bool inSubject_ = false;
  bool hasEncoding_ = false;
  bool hasParts_ = false;
  bool hasBody_ = false;
  bool isBodyText_ = false;

  Region region_ = Region::kMessageHeader;
  PartHeader header_;
  std::uint64_t textBegin_ = 0;
  NestedText nested_;
};

/// Reads a whole message.
MessageStructure ReadStructure(std::string_view text);

}  // namespace ModMail
