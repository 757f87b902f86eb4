#include "settings/ini_text.h"

#include <algorithm>
#include <utility>

#include "platform/text_case.h"
#include "text/code_page.h"
#include "text/utf8.h"

namespace settings {
namespace {

using platform::Charset;

constexpr std::string_view kSpace = " \t";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// One line of the text, without its line end, and its position.
struct Line {
  std::size_t begin;
  std::string_view content;
  std::size_t next;
};

Line LineAt(std::string_view text, std::size_t begin) {
  const std::size_t lineFeed = text.find('\n', begin);
  const std::size_t end = lineFeed == std::string_view::npos ? text.size() : lineFeed;
  std::string_view content = text.substr(begin, end - begin);
  if (content.ends_with('\r')) content.remove_suffix(1);
  return {begin, content, lineFeed == std::string_view::npos ? end : end + 1};
}

std::optional<std::string_view> SectionName(std::string_view line) {
  const std::string_view trimmed = Trim(line);
  if (!trimmed.starts_with('[')) return std::nullopt;
  return Trim(trimmed.substr(1, trimmed.find(']') - 1));
}

}  // namespace

IniText::IniText(std::string fileBytes)
    : bytes_(std::move(fileBytes)), charset_(text::CharsetOf(bytes_)) {}

IniText::IniText(std::string fileBytes, Charset charset, std::string_view lineBreak)
    : bytes_(std::move(fileBytes)), charset_(charset), firstLineBreak_(lineBreak) {}

bool IniText::HasSection(std::string_view section) const {
  return Locate(section, {}).sectionFound;
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
  const Place place = Locate(section, key);
  if (!place.keyFound) return std::nullopt;
  return Decoded(
      std::string_view(bytes_).substr(place.valueBegin, place.valueEnd - place.valueBegin));
}

void IniText::AddSection(std::string_view section) {
  if (HasSection(section)) return;
  if (!Holds(section)) BecomeUtf8();
  InsertSection(section);
  EnsureDetected();
}

void IniText::Set(std::string_view section, std::string_view key, std::string_view value) {
  value = value.substr(0, value.find('\0'));
  if (!Holds(section) || !Holds(key) || !Holds(value)) BecomeUtf8();
  Write(section, key, value);
  EnsureDetected();
}

void IniText::Write(std::string_view section, std::string_view key, std::string_view value) {
  std::string written = text::Encode(charset_, value);
  std::replace_if(
      written.begin(), written.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  const Place place = Locate(section, key);
  if (place.keyFound) {
    bytes_.replace(place.valueBegin, place.valueEnd - place.valueBegin, written);
    return;
  }
  const std::string line = text::Encode(charset_, key) + "=" + written;
  if (place.sectionFound) return Insert(place.insertAt, line);
  InsertSection(section);
  Insert(bytes_.size(), line);
}

void IniText::InsertSection(std::string_view section) {
  Insert(bytes_.size(), "[" + text::Encode(charset_, section) + "]");
}

bool IniText::Holds(std::string_view text) const {
  bool lossless = false;
  text::Encode(charset_, text, &lossless);
  return lossless;
}

// Some texts in GBK are valid UTF-8 as well, and would be read as that.
void IniText::EnsureDetected() {
  if (charset_ != Charset::kUtf8 && text::CharsetOf(bytes_) != charset_) BecomeUtf8();
}

// Line by line: a line that is not valid in the file's character set is kept unchanged.
void IniText::BecomeUtf8() {
  std::string text;
  for (std::size_t position = 0; position < bytes_.size();) {
    const std::size_t next = LineAt(bytes_, position).next;
    const std::string_view line = std::string_view(bytes_).substr(position, next - position);
    bool lossless = false;
    const std::string converted = platform::ToUtf8(charset_, line, &lossless);
    text += lossless ? converted : line;
    position = next;
  }
  bytes_ = std::move(text);
  charset_ = Charset::kUtf8;
}

// Nearly all names are ASCII, and a large file has many.
bool IniText::IsNamed(std::string_view written, std::string_view name) const {
  if (written.size() != name.size() && IsAscii(written) && IsAscii(name)) return false;
  return platform::EqualIgnoringCase(Decoded(written), name);
}

IniText::Place IniText::Locate(std::string_view section, std::string_view key) const {
  Place place;
  const std::string_view text = bytes_;
  std::size_t position = text.size() - text::WithoutByteOrderMark(text).size();
  while (position < text.size()) {
    const Line line = LineAt(text, position);
    position = line.next;
    if (const auto name = SectionName(line.content)) {
      if (place.sectionFound) break;
      place.sectionFound = IsNamed(*name, section);
      place.insertAt = line.next;
      continue;
    }
    if (!place.sectionFound || Trim(line.content).empty()) continue;
    place.insertAt = line.next;
    const std::size_t equals = line.content.find('=');
    if (equals == std::string_view::npos || Trim(line.content).starts_with(';')) continue;
    if (!IsNamed(Trim(line.content.substr(0, equals)), key)) continue;
    place.keyFound = true;
    place.valueBegin = line.begin + equals + 1;
    place.valueEnd = line.begin + line.content.size();
    break;
  }
  return place;
}

std::string_view IniText::LineBreak() const {
  const std::size_t lineFeed = bytes_.find('\n');
  if (lineFeed == std::string::npos) return firstLineBreak_;
  const bool unixStyle = lineFeed == 0 || bytes_[lineFeed - 1] != '\r';
  return unixStyle ? "\n" : "\r\n";
}

std::string IniText::Decoded(std::string_view part) const { return text::Decode(charset_, part); }

void IniText::Insert(std::size_t position, std::string_view line) {
  const std::string lineBreak(LineBreak());
  bytes_.insert(position, MissingLineEnd(position, lineBreak) + std::string(line) + lineBreak);
}

// Completes the line in front of `position`: the last line of a file may lack its line end, or half
// of it.
std::string IniText::MissingLineEnd(std::size_t position, const std::string& lineBreak) const {
  if (position == 0 || bytes_[position - 1] == '\n' || bytes_ == text::kByteOrderMark) return "";
  return bytes_[position - 1] == '\r' ? "\n" : lineBreak;
}

}  // namespace settings
