#pragma once

// Whether the lines of a request's header, or of the trailer behind its chunks, are such that
// everybody reads them alike. The parser is more liberal: it would take a CR alone for a line end,
// and another server in front of this one would not.

#include <cstddef>
#include <string_view>

namespace ModWeb {

/// Whether names of fields may have it.
bool IsInToken(char c);

class HeaderSyntax {
 public:
  enum class Of { kHeader, kTrailer };

  explicit HeaderSyntax(Of what) : part_(what == Of::kHeader ? Part::kLead : Part::kLineBegin) {}

  /// How many bytes at the beginning of `bytes` are in order: up to the end of the header, or to
  /// the first byte that nothing can be built on.
  std::size_t Take(std::string_view bytes);

  /// Whether the empty line at the end has been taken.
  bool IsAtEnd() const { return part_ == Part::kEnd; }
  bool IsInFirstLine() const { return part_ == Part::kLead || part_ == Part::kRequestLine; }

 private:
  enum class Part { kLead, kRequestLine, kLineBegin, kName, kValue, kEnd };

  std::size_t PlainLength(std::string_view bytes) const;
  bool Step(char c);
  bool InRequestLine(char c);
  bool InName(char c);
  bool BeginsLineEnd();
  bool EndsLine();

  Part part_;
  bool isAtCr_ = false;
  int blanks_ = 0;          // of the request line
  std::size_t inPart_ = 0;  // characters since the last blank, or of the name
};

}  // namespace ModWeb
