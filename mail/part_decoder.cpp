#include "mail/part_decoder.h"

#include <algorithm>
#include <charconv>

#include "mail/ascii_case.h"

namespace ModMail {

std::string DotRemover::Next(std::string_view piece) {
  std::string text;
  text.reserve(piece.size());
  while (!piece.empty()) {
    if (at_ == At::kInLine) {
      const std::size_t length = std::min(piece.find('\n'), piece.size() - 1) + 1;
      text += piece.substr(0, length);
      if (text.ends_with('\n')) at_ = At::kLineStart;
      piece.remove_prefix(length);
      continue;
    }
    const bool isDot = piece.front() == '.';
    if (at_ == At::kLineStart && isDot) {
      text += '.';
      piece.remove_prefix(1);
    } else if (isDot) {
      piece.remove_prefix(1);
    }
    at_ = at_ == At::kLineStart && isDot ? At::kAfterDot : At::kInLine;
  }
  return text;
}

std::string QuotedBytes::Next(std::string_view piece) {
  const std::string joined = cut_ + std::string(piece);
  std::string_view rest = joined;
  std::string decoded;
  decoded.reserve(joined.size());
  while (!rest.empty()) {
    const std::size_t plain = std::min(rest.find('='), rest.size());
    decoded += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (rest.empty() || !Take(rest, decoded)) break;
  }
  cut_ = rest;
  return decoded;
}

// Takes what begins with "=". False if it is incomplete.
bool QuotedBytes::Take(std::string_view& rest, std::string& decoded) {
  // Blanks at the end of a line do not count, but are hardly ever many.
  constexpr std::size_t kMostBlanks = 100;
  const std::size_t next = rest.find_first_not_of(" \t\r", 1);
  if (next == std::string_view::npos && rest.size() < kMostBlanks) return false;
  if (next != std::string_view::npos && rest[next] == '\n') {
    rest.remove_prefix(next + 1);
    return true;
  }
  if (rest.size() < 3 && next == 1) return false;
  unsigned value = 0;
  const std::string_view digits = rest.substr(1, 2);
  const char* const end = digits.data() + digits.size();
  const bool isEscape = std::from_chars(digits.data(), end, value, 16).ptr == end;
  decoded += isEscape ? static_cast<char>(value) : '=';
  rest.remove_prefix(isEscape ? 3 : 1);
  return true;
}

std::string QuotedBytes::End() {
  const bool isLineEnd = cut_.find_first_not_of(" \t\r", 1) == std::string::npos;
  return isLineEnd ? std::string() : cut_;
}

PartReader::PartReader(platform::File& file, const MimePart& part) : text_(file, part.text) {
  if (part.encoding == "base64") encoding_ = Encoding::kBase64;
  if (part.encoding == "quoted-printable") encoding_ = Encoding::kQuoted;
}

bool PartReader::Next(std::string& decoded, std::error_code& error) {
  const std::string_view piece = text_.Next(error);
  if (error) return false;
  if (!piece.empty()) {
    decoded += Decoded(dots_.Next(piece));
    return true;
  }
  decoded += base64_.End() + quoted_.End();
  return false;
}

std::string PartReader::Decoded(std::string_view piece) {
  switch (encoding_) {
    case Encoding::kBase64:
      return base64_.Next(piece);
    case Encoding::kQuoted:
      return quoted_.Next(piece);
    default:
      return std::string(piece);
  }
}

}  // namespace ModMail
