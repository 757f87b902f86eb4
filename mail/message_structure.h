#pragma once

// Where in a received message its pieces are: subject, body and attachments. It reads lines, ended
// by CR LF or LF, and knows just enough of MIME to cut messages of today's mail programs right:
//
// - A line that begins with "--" and one of the boundaries begins a part, or ends the last one if
//   another "--" follows. The line end in front of it belongs to it and not to the part.
// - A boundary is the value behind "boundary=", wherever in the message; the first two count.
// - A part's header reaches to its first empty line. A part with "filename=" in its header is an
//   attachment; the first ten count.
// - The body is the first part that is neither an attachment nor a multipart itself; without parts,
//   all that follows the message's header, or the whole message if it has no empty line.
// - The first "Content-Transfer-Encoding:" line of the whole message rules the body, whosever part
//   it stands in; an attachment has its own.
// - The line "." that ended the transfer is no part of anything.
//
// Any bytes are accepted. The views are into the text given.

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace ModMail {

struct Attachment {
  std::string_view name;      // as it stands in the header, without quotation marks
  std::string_view encoding;  // empty if the part names none
  std::string_view text;
};

struct MessageStructure {
  /// The value of the first "Subject: ", folded lines included.
  std::string_view subject;
  /// Empty if the message names none.
  std::string_view bodyEncoding;
  std::string_view body;
  std::vector<Attachment> attachments;
};

/// Reads a message step by step, so that a large one can be read in turns with other work.
class MessageScanner {
 public:
  static constexpr std::size_t kMostBoundaries = 2;
  static constexpr std::size_t kMostAttachments = 10;

  /// `text` must outlive what is found in it.
  explicit MessageScanner(std::string_view text);

  /// Reads on for about `count` bytes. False once the whole text has been read.
  bool Step(std::size_t count);

  /// What was found, once the whole text has been read.
  MessageStructure Take();

 private:
  enum class Region { kMessageHeader, kBetween, kPartHeader, kPartText };

  std::size_t LineLength() const;
  void TakeLine(std::string_view line);
  void TakeHeaderField(std::string_view line);
  void TakeBoundaries(std::string_view line);
  bool TakeDelimiter(std::string_view line);
  void EndHeader();
  void BeginPart();
  void EndPart(std::size_t end);
  std::string_view Between(std::size_t begin, std::size_t end) const;

  std::string_view text_;
  std::size_t position_ = 0;  // of the line being read
  std::size_t next_ = 0;      // behind it
  bool isLineStart_ = true;   // a very long line is read in pieces

  MessageStructure found_;
  std::array<std::string_view, kMostBoundaries> boundaries_;
  std::size_t boundaryCount_ = 0;
  std::optional<std::size_t> subject_;  // where it begins
  bool inSubject_ = false;
  bool hasEncoding_ = false;
  bool hasParts_ = false;
  bool hasBody_ = false;

  Region region_ = Region::kMessageHeader;
  std::size_t headerBegin_ = 0;
  std::size_t textBegin_ = 0;
  std::string_view partHeader_;
};

/// All of it at once.
MessageStructure ReadStructure(std::string_view text);

}  // namespace ModMail
