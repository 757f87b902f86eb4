#pragma once

// The header of one part of a message, as far as unpacking looks at it, and the lines that part the
// parts. Headers are gathered line by line; what one holds beyond a bound is not looked at, so that
// no message makes it grow.

#include <cstddef>
#include <string>
#include <string_view>

namespace ModMail {

class PartHeader {
 public:
  static constexpr std::size_t kLongest = 65536;

  void Clear() { text_.clear(); }
  /// `line` with its line end, or a piece of a very long one.
  void Add(std::string_view line) { text_ += line.substr(0, kLongest - text_.size()); }

  bool IsAttachment() const;
  bool IsMultipart() const;
  /// Whether it says that the part is a text, or does not say what it is.
  bool IsText() const;

  /// The attachment's name as it stands there, without quotation marks.
  std::string_view FileName() const;
  /// Empty if it names none.
  std::string_view Encoding() const;
  /// Empty if it names none.
  std::string_view Boundary() const;

 private:
  std::string text_;
};

/// A line without its LF or CR LF.
std::string_view WithoutLineEnd(std::string_view line);

/// `text` without blanks and line ends around it.
std::string_view Trimmed(std::string_view text);

/// The value that `text` begins with, with its quotation marks or without any.
std::string_view ParameterValue(std::string_view text);

enum class Delimiter { kNone, kOpening, kClosing };

/// What `line` is to the parts that `boundary` parts.
Delimiter DelimiterOf(std::string_view line, std::string_view boundary);

}  // namespace ModMail
