#pragma once

// Decodes the content of a part for the person who reads the message (mail/mime_message.h): the
// client's dots removed, base64 and quoted-printable decoded as RFC 2045 says. Unpacking has a
// quoted-printable decoder of its own (mail/quoted_printable.h).

#include <string>
#include <string_view>
#include <system_error>

#include "mail/base64.h"
#include "mail/mime_message.h"
#include "mail/stretch.h"
#include "platform/file.h"

namespace ModMail {

/// Removes the first of two dots at the beginning of a line: SMTP clients double them.
class DotRemover {
 public:
  std::string Next(std::string_view piece);

 private:
  enum class At { kLineStart, kAfterDot, kInLine };
  At at_ = At::kLineStart;
};

/// Decodes quoted-printable to bytes. What is no escape stays as it is.
class QuotedBytes {
 public:
  /// The result does not depend on where the text is cut.
  std::string Next(std::string_view piece);
  std::string End();

 private:
  bool Take(std::string_view& rest, std::string& decoded);

  std::string cut_;  // an escape that may continue in the next piece
};

/// Reads the decoded content of a part piece by piece, so that it may have any size.
class PartReader {
 public:
  /// `file` must outlive the reader, and may have only one reader at a time.
  PartReader(platform::File& file, const MimePart& part);

  /// Decodes a piece of at most StretchReader::kPieceBytes and appends it to `decoded`. False at
  /// the end, and with `error` set if the file cannot be read.
  bool Next(std::string& decoded, std::error_code& error);

 private:
  enum class Encoding { kNone, kBase64, kQuoted };

  std::string Decoded(std::string_view piece);

  StretchReader text_;
  Encoding encoding_ = Encoding::kNone;
  DotRemover dots_;
  Base64Decoder base64_;
  QuotedBytes quoted_;
};

}  // namespace ModMail
