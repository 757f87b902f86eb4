#include "web/http/header_syntax.h"

#include <array>
#include <utility>

#include "platform/ascii.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

constexpr std::string_view kProtocol = "HTTP/";
constexpr int kBlanks = 2;  // "GET /a HTTP/1.1"

constexpr std::array<bool, 256> kTokens = [] {
  std::array<bool, 256> tokens = {};
  for (const char c : std::string_view("!#$%&'*+-.^_`|~0123456789abcdefghijklmnopqrstuvwxyz")) {
    tokens[static_cast<unsigned char>(c)] = true;
    tokens[static_cast<unsigned char>(platform::UpperAscii(c))] = true;
  }
  return tokens;
}();

}  // namespace

bool IsInToken(char c) { return kTokens[static_cast<unsigned char>(c)]; }

std::size_t HeaderSyntax::Take(std::string_view bytes) {
  std::size_t taken = 0;
  while (!IsAtEnd()) {
    const std::size_t plain = isAtCr_ ? 0 : PlainLength(bytes.substr(taken));
    inPart_ += plain;
    taken += plain;
    if (taken == bytes.size() || !Step(bytes[taken])) break;
    ++taken;
  }
  return taken;
}

// Of what neither ends the part of the line where we are nor begins another: most of a header.
std::size_t HeaderSyntax::PlainLength(std::string_view bytes) const {
  if (part_ == Part::kName) return text::PrefixLength(bytes, IsInToken);
  if (part_ == Part::kValue)
    return text::PrefixLength(bytes, [](char c) { return !text::IsControl(c); });
  if (part_ != Part::kRequestLine || blanks_ == kBlanks) return 0;
  return text::PrefixLength(bytes, [](char c) { return c != ' ' && !text::IsControl(c); });
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
