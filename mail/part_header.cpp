#include "mail/part_header.h"

#include <algorithm>

#include "mail/ascii_case.h"

namespace ModMail {
namespace {

constexpr std::string_view kContentType = "Content-Type:";
constexpr std::string_view kEncoding = "Content-Transfer-Encoding:";
constexpr std::string_view kFileName = "filename=";
constexpr std::string_view kBoundary = "boundary=";

// The value of the first line of `header` that begins with `field`.
std::string_view FieldValue(std::string_view header, std::string_view field) {
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find('\n'));
    if (StartsWithAscii(line, field)) return Trimmed(line.substr(field.size()));
    header.remove_prefix(std::min(line.size() + 1, header.size()));
  }
  return {};
}

std::string_view Parameter(std::string_view header, std::string_view name) {
  const std::size_t found = FindAscii(header, name);
  if (found == std::string_view::npos) return {};
  return ParameterValue(header.substr(found + name.size()));
}

}  // namespace

bool PartHeader::IsAttachment() const {
  return FindAscii(text_, kFileName) != std::string_view::npos;
}

bool PartHeader::IsMultipart() const {
  return StartsWithAscii(FieldValue(text_, kContentType), "multipart/");
}

bool PartHeader::IsText() const {
  const std::string_view type = FieldValue(text_, kContentType);
  return type.empty() || StartsWithAscii(type, "text/");
}

std::string_view PartHeader::FileName() const { return Parameter(text_, kFileName); }

std::string_view PartHeader::Encoding() const { return FieldValue(text_, kEncoding); }

std::string_view PartHeader::Boundary() const { return Parameter(text_, kBoundary); }

std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view ParameterValue(std::string_view text) {
  if (text.starts_with('"')) {
    text.remove_prefix(1);
    const std::size_t quote = text.find('"');
    return quote != std::string_view::npos ? text.substr(0, quote)
                                           : text.substr(0, text.find_first_of("\r\n"));
  }
  return text.substr(0, text.find_first_of(" \t\r\n;"));
}

Delimiter DelimiterOf(std::string_view line, std::string_view boundary) {
  if (!line.starts_with("--") || !line.substr(2).starts_with(boundary)) return Delimiter::kNone;
  const std::string_view rest = Trimmed(line.substr(2 + boundary.size()));
  if (rest == "--") return Delimiter::kClosing;
  return rest.empty() ? Delimiter::kOpening : Delimiter::kNone;
}

}  // namespace ModMail
