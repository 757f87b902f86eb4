#include "web/http/header_syntax.h"

#include <utility>

#include "text/strings.h"

namespace ModWeb {
namespace {

constexpr std::string_view kProtocol = "HTTP/";
constexpr int kBlanks = 2;  // "GET /a HTTP/1.1"

}  // namespace

bool IsInToken(char c) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         kMarks.find(c) != std::string_view::npos;
}

std::size_t HeaderSyntax::Take(std::string_view bytes) {
  std::size_t taken = 0;
  while (taken < bytes.size() && !IsAtEnd() && Step(bytes[taken])) ++taken;
  return taken;
}

bool HeaderSyntax::Step(char c) {
  if (isAtCr_) return c == '\n' && EndsLine();
  if (c == '\r') return BeginsLineEnd();
  if (text::IsControl(c) && (c != '\t' || part_ != Part::kValue)) return false;
  if (part_ == Part::kLead) part_ = Part::kRequestLine;
  if (part_ == Part::kLineBegin) part_ = Part::kName;
  if (part_ == Part::kRequestLine) return InRequestLine(c);
  return part_ == Part::kValue || InName(c);
}

// The parser would also take the protocols of others.
bool HeaderSyntax::InRequestLine(char c) {
  if (c == ' ') return std::exchange(inPart_, 0) > 0 && ++blanks_ <= kBlanks;
  const std::size_t at = inPart_++;
  return blanks_ < kBlanks || at >= kProtocol.size() || c == kProtocol[at];
}

// A line that begins with a blank would be the rest of the one before.
bool HeaderSyntax::InName(char c) {
  if (c != ':') return ++inPart_ > 0 && IsInToken(c);
  part_ = Part::kValue;
  return std::exchange(inPart_, 0) > 0;
}

bool HeaderSyntax::BeginsLineEnd() {
  isAtCr_ = true;
  return part_ != Part::kName && (part_ != Part::kRequestLine || blanks_ == kBlanks);
}

bool HeaderSyntax::EndsLine() {
  isAtCr_ = false;
  inPart_ = 0;
  if (part_ == Part::kLead) return true;  // empty lines in front are nothing
  part_ = part_ == Part::kLineBegin ? Part::kEnd : Part::kLineBegin;
  return true;
}

}  // namespace ModWeb
