#pragma once

// The header of one part of a message, as far as unpacking uses it, and the lines that separate
// parts. A header is collected line by line up to a bound; the rest is ignored.

#include <cstddef>
#include <string>
#include <string_view>

namespace ModMail {

class PartHeader {
 public:
  static constexpr std::size_t kLongest = 65536;

  void Clear() { text_.clear(); }
  /// `line` includes its line end, or is a piece of a very long line.
  void Add(std::string_view line) { text_ += line.substr(0, kLongest - text_.size()); }

  bool IsAttachment() const;
  bool IsMultipart() const;
  /// Whether the part's type is a text or not given.
  bool IsText() const;

  /// The values of the header, still encoded but without quotation marks; empty if it has none.
  std::string_view FileName() const;
  std::string_view Encoding() const;
  std::string_view Boundary() const;

 private:
  std::string text_;
};

/// A line without its LF or CR LF.
std::string_view WithoutLineEnd(std::string_view line);

/// `text` without blanks and line ends around it.
std::string_view Trimmed(std::string_view text);

/// The value that `text` begins with, without its quotation marks if it has any.
std::string_view ParameterValue(std::string_view text);

enum class Delimiter { kNone, kOpening, kClosing };

/// What `line` is to the parts separated by `boundary`.
Delimiter DelimiterOf(std::string_view line, std::string_view boundary);

}  // namespace ModMail
