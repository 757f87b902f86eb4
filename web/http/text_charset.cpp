#include "web/http/text_charset.h"

#include <algorithm>

#include "platform/ascii.h"
#include "platform/text_case.h"
#include "text/code_page.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace ModWeb {
namespace {

using platform::IsAscii;

// Browsers do not look for a declaration beyond that.
constexpr std::size_t kDeclarations = 1024;

// The bytes that a cut character of UTF-8 can have.
constexpr std::size_t kLongestPart = 3;

bool HasByteOrderMark(std::string_view bytes) {
  return bytes.starts_with(text::kByteOrderMark) || bytes.starts_with("\xFF\xFE") ||
         bytes.starts_with("\xFE\xFF");
}

// Whether "charset", blanks and "=" are in `element`, which is in upper case.
bool NamesCharset(std::string_view element) {
  constexpr std::string_view kName = "CHARSET";
  const std::size_t name = element.find(kName);
  if (name == std::string_view::npos) return false;
  const std::size_t next = element.find_first_not_of(" \t\r\n\f", name + kName.size());
  return next != std::string_view::npos && element[next] == '=';
}

// A <meta> that is not in a comment. `html` is in upper case.
bool DeclaresInHtml(std::string_view html) {
  while (true) {
    const std::size_t begin = html.find('<');
    if (begin == std::string_view::npos) return false;
    html.remove_prefix(begin);
    const bool isComment = html.starts_with("<!--");
    const std::size_t end = isComment ? html.find("-->", 2) : html.find('>');
    if (html.starts_with("<META") && NamesCharset(html.substr(0, end))) return true;
    if (end == std::string_view::npos) return false;
    html.remove_prefix(end);
  }
}

// `xml` is in upper case.
bool DeclaresInXml(std::string_view xml) {
  if (!xml.starts_with("<?XML")) return false;
  return xml.substr(0, xml.find("?>")).find("ENCODING") != std::string_view::npos;
}

bool DeclaresCharset(std::string_view type, std::string_view beginning) {
  const bool mayDeclare = type == "text/html" || type == "text/css" || type.ends_with("xml");
  if (!mayDeclare) return false;
  const std::string upper = platform::UpperCase(beginning.substr(0, kDeclarations));
  if (type == "text/html") return DeclaresInHtml(upper);
  if (type == "text/css") return upper.starts_with("@CHARSET");
  return DeclaresInXml(upper);
}

std::string_view WithoutLast(std::size_t count, std::string_view bytes) {
  return bytes.substr(0, bytes.size() - std::min(count, bytes.size()));
}

// Whether some beginning of `bytes` is valid that lacks at most `part` bytes, those of a character
// that may be cut.
template <class IsValid>
bool IsValidBut(std::size_t part, std::string_view bytes, IsValid isValid) {
  for (std::size_t cut = 0; cut <= part; ++cut) {
    if (isValid(WithoutLast(cut, bytes))) return true;
  }
  return false;
}

bool IsUtf8(std::string_view bytes, bool isWhole) {
  return IsValidBut(isWhole ? 0 : kLongestPart, bytes, text::IsValidUtf8);
}

bool IsGbk(std::string_view bytes, bool isWhole) {
  return IsValidBut(isWhole ? 0 : 1, bytes, [](std::string_view part) {
    bool lossless = false;
    platform::ToUtf8(platform::Charset::kGbk, part, &lossless);
    return lossless;
  });
}

// A control character that texts do not have; escape sequences are found in logs.
bool IsBinary(char c) {
  constexpr std::string_view kInTexts = "\t\n\r\f\x1B";
  return text::IsControl(c) && kInTexts.find(c) == std::string_view::npos;
}

}  // namespace

std::string_view CharsetFor(std::string_view type, std::string_view beginning, bool isWhole) {
  const bool isAscii = IsAscii(beginning);
  if (isAscii && type == "text/html") return {};
  if (HasByteOrderMark(beginning) || DeclaresCharset(type, beginning)) return {};
  // In ASCII every set is the same, and what follows a beginning may be in any.
  if (isAscii && isWhole) return "utf-8";
  if (IsAscii(WithoutLast(kLongestPart, beginning))) return {};
  if (IsUtf8(beginning, isWhole)) return "utf-8";
  return IsGbk(beginning, isWhole) ? "gbk" : "";
}

bool IsPlainText(std::string_view beginning, bool isWhole) {
  if (HasByteOrderMark(beginning)) return true;
  if (std::any_of(beginning.begin(), beginning.end(), IsBinary)) return false;
  return IsUtf8(beginning, isWhole) || IsGbk(beginning, isWhole);
}

}  // namespace ModWeb
