#include "web/http/media_type.h"

#include <algorithm>
#include <array>

#include "platform/ascii.h"
#include "platform/media_types.h"
#include "web/http/text_charset.h"

namespace ModWeb {
namespace {

using platform::IsAsciiLetterOrDigit;

struct KnownType {
  std::string_view ending;
  std::string_view type;
};

constexpr std::string_view kUnknown = "application/octet-stream";
constexpr std::string_view kPlainText = "text/plain";

constexpr std::array kTypes = {
    KnownType{"7z", "application/x-7z-compressed"},
    KnownType{"aac", "audio/aac"},
    KnownType{"apk", "application/vnd.android.package-archive"},
    KnownType{"apng", "image/apng"},
    KnownType{"avif", "image/avif"},
    KnownType{"bmp", "image/bmp"},
    KnownType{"css", "text/css"},
    KnownType{"csv", "text/csv"},
    KnownType{"flac", "audio/flac"},
    KnownType{"gif", "image/gif"},
    KnownType{"gz", "application/gzip"},
    KnownType{"htm", "text/html"},
    KnownType{"html", "text/html"},
    KnownType{"ico", "image/x-icon"},
    KnownType{"jpeg", "image/jpeg"},
    KnownType{"jpg", "image/jpeg"},
    KnownType{"js", "text/javascript"},
    KnownType{"json", "application/json"},
    KnownType{"log", kPlainText},
    KnownType{"m3u8", "application/vnd.apple.mpegurl"},
    KnownType{"m4a", "audio/mp4"},
    KnownType{"m4v", "video/mp4"},
    KnownType{"map", "application/json"},
    KnownType{"md", kPlainText},
    KnownType{"mjs", "text/javascript"},
    KnownType{"mkv", "video/x-matroska"},
    KnownType{"mov", "video/quicktime"},
    KnownType{"mp3", "audio/mpeg"},
    KnownType{"mp4", "video/mp4"},
    KnownType{"oga", "audio/ogg"},
    KnownType{"ogg", "audio/ogg"},
    KnownType{"ogv", "video/ogg"},
    KnownType{"opus", "audio/ogg"},
    KnownType{"otf", "font/otf"},
    KnownType{"pdf", "application/pdf"},
    KnownType{"png", "image/png"},
    KnownType{"rar", "application/vnd.rar"},
    KnownType{"svg", "image/svg+xml"},
    KnownType{"tar", "application/x-tar"},
    KnownType{"ts", "video/mp2t"},
    KnownType{"ttf", "font/ttf"},
    KnownType{"txt", kPlainText},
    KnownType{"vtt", "text/vtt"},
    KnownType{"wasm", "application/wasm"},
    KnownType{"wav", "audio/wav"},
    KnownType{"webm", "video/webm"},
    KnownType{"webmanifest", "application/manifest+json"},
    KnownType{"webp", "image/webp"},
    KnownType{"woff", "font/woff"},
    KnownType{"woff2", "font/woff2"},
    KnownType{"xht", "application/xhtml+xml"},
    KnownType{"xhtml", "application/xhtml+xml"},
    KnownType{"xml", "application/xml"},
    KnownType{"xsl", "application/xslt+xml"},
    KnownType{"zip", "application/zip"},
};
static_assert(std::is_sorted(kTypes.begin(), kTypes.end(),
                             [](auto& left, auto& right) { return left.ending < right.ending; }));

// In lower case; empty if there is none. The dot of a hidden name does not begin an ending.
std::string EndingOf(std::string_view path) {
  const auto isSeparator = [](char c) { return c == '\\' || c == '/'; };
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || isSeparator(path[dot - 1])) return {};
  std::string ending(path.substr(dot + 1));
  if (std::any_of(ending.begin(), ending.end(), isSeparator)) return {};
  std::transform(ending.begin(), ending.end(), ending.begin(), platform::LowerAscii);
  return ending;
}

// Whether `type` is one, and may be written into a header.
bool IsMediaType(std::string_view type) {
  constexpr std::size_t kLongest = 127;
  const auto isAllowed = [](char c) {
    return IsAsciiLetterOrDigit(c) ||
           std::string_view("/!#$&^_.+-").find(c) != std::string_view::npos;
  };
  const std::size_t slash = type.find('/');
  return type.size() <= kLongest && slash > 0 && slash + 1 < type.size() &&
         slash == type.rfind('/') && std::all_of(type.begin(), type.end(), isAllowed);
}

std::string SystemTypeOf(std::string_view ending) {
  constexpr std::size_t kLongest = 32;
  if (ending.size() > kLongest) return {};
  if (!std::all_of(ending.begin(), ending.end(), IsAsciiLetterOrDigit)) return {};
  std::string type = platform::MediaTypeOfEnding(ending);
  return IsMediaType(type) ? type : std::string();
}

bool IsText(std::string_view type) {
  return type.starts_with("text/") || type.ends_with("xml") || type.ends_with("json") ||
         type.ends_with("javascript");
}

}  // namespace

std::string TypeByName(std::string_view name) {
  const std::string ending = EndingOf(name);
  if (ending.empty()) return {};
  const auto known = std::lower_bound(
      kTypes.begin(), kTypes.end(), ending,
      [](const KnownType& type, std::string_view wanted) { return type.ending < wanted; });
  if (known != kTypes.end() && known->ending == ending) return std::string(known->type);
  const std::string type = SystemTypeOf(ending);
  return type.empty() ? std::string(kUnknown) : type;
}

bool DependsOnBytes(std::string_view type) { return type.empty() || IsText(type); }

std::string MediaTypeOf(std::string type, std::string_view beginning, bool isWhole) {
  if (type.empty()) type = IsPlainText(beginning, isWhole) ? kPlainText : kUnknown;
  if (!IsText(type)) return type;
  const std::string_view charset = CharsetFor(type, beginning, isWhole);
  if (!charset.empty()) type.append("; charset=").append(charset);
  return type;
}

}  // namespace ModWeb
