#pragma once

// The structure of a stored message for the person who reads it in the window. Unlike unpacking
// (mail/message_structure.h), whose stated rules decide which files appear, it follows RFC 2045 to
// 2049: parts nested in one another, each with its own encoding and character set.
//
// A message file contains what the client sent: a "." in front of lines that begin with one, and
// the line "." that ended the transfer. Messages can be appended to a file that exists already, so
// a file can contain several; each "." that a header follows divides two of them.
//
// Any bytes are accepted. The time is linear in their number and the memory is bounded: 20 nested
// multiparts are followed (deeper ones are one attachment), 200 parts of a message and 50 messages
// of a file are told apart, and of headers and lines 64 KiB are read.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mail/nested_text.h"
#include "mail/part_header.h"
#include "mail/stretch.h"

namespace ModMail {

struct MimePart {
  std::string type;           // "text/plain", in lower case
  std::string charset;        // empty if none is named
  std::string encoding;       // in lower case; empty if none is named
  std::string name;           // decoded; not yet safe to show, nor as a file's name
  bool isAttachment = false;  // not to be shown as a text
  int alternative = 0;        // parts with the same number, but 0, say the same in different ways
  Stretch text;               // in the file
  std::uint64_t size = 0;     // about that of the decoded content
};

struct MimeMessage {
  // Decoded; not yet safe to show.
  std::string from;
  std::string to;
  std::string copies;  // "Cc"
  std::string subject;
  std::string date;  // as sent
  std::vector<MimePart> parts;
  bool isCut = false;  // it has more parts
};

/// Reads a file piece by piece. The result does not depend on where it is cut.
class MimeScanner {
 public:
  static constexpr std::size_t kMostDepth = 20;
  static constexpr std::size_t kMostParts = 200;
  static constexpr std::size_t kMostMessages = 50;

  /// The next bytes of the file.
  void Take(std::string_view bytes);

  /// The messages, at least one, after the whole file was passed to Take.
  std::vector<MimeMessage> End();

 private:
  enum class Region { kHeader, kText, kBetween };

  struct Multipart {
    std::string boundary;
    int alternative;
  };

  void TakeLine(std::string_view line);
  void ReadLine(std::string_view line, const LinePlace& place);
  bool ReadDelimiter(std::string_view line, const LinePlace& place);
  void EndHeader(std::uint64_t next);
  void ReadMessageHeader();
  bool EnterMultipart(const std::string& type, const std::string& contentType);
  void CountEncoded(std::string_view line);
  void EndPart(std::uint64_t end);
  void EndMessage(std::uint64_t end);

  std::string unread_;         // the beginning of a line whose end is still missing
  bool isLineStart_ = true;    // a very long line is read in pieces
  bool endsInReturn_ = false;  // such a piece
  std::uint64_t position_ = 0;
  std::size_t lineEnd_ = 0;  // bytes of the line end before the position
  std::string dot_;          // a line "." of which the next line decides what it is
  LinePlace dotPlace_;

  std::vector<MimeMessage> messages_ = std::vector<MimeMessage>(1);
  bool isMessageHeader_ = true;
  int alternatives_ = 0;
  std::vector<Multipart> multiparts_;  // the innermost one last
  Region region_ = Region::kHeader;
  std::string header_;
  MimePart part_;
  std::uint64_t encoded_ = 0;  // characters of base64 in the part
};

/// Reads a whole file.
std::vector<MimeMessage> ReadMime(std::string_view file);

}  // namespace ModMail
