#include "mail/shown_subject.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "mail/ascii_case.h"
#include "mail/base64.h"
#include "text/code_page.h"

namespace ModMail {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The value of the field, unfolded.
std::string SubjectField(std::string_view header) {
  constexpr std::string_view kName = "Subject:";
  std::string value;
  bool isFound = false;
  while (!header.empty()) {
    const std::string_view line = TakeLine(header);
    if (line.empty()) break;
    const bool isFolded = kBlanks.find(line.front()) != std::string_view::npos;
    if (isFound && !isFolded) break;
    if (isFound) value += line;
    if (isFound || !StartsWithAscii(line, kName)) continue;
    isFound = true;
    value = line.substr(kName.size());
  }
  return value.erase(0, std::min(value.find_first_not_of(kBlanks), value.size()));
}

bool IsChinese(std::string_view charset) {
  constexpr std::array<std::string_view, 3> kSets = {"gb2312", "gbk", "gb18030"};
  return std::any_of(kSets.begin(), kSets.end(),
                     [charset](std::string_view set) { return EqualAscii(set, charset); });
}

// "=?charset?encoding?text?=", without its frame.
struct Word {
  std::string_view charset;
  char encoding = 0;
  std::string_view text;
};

// Takes the word that `text` begins with; none if that is no word that can be decoded.
std::optional<Word> TakeWord(std::string_view& text) {
  if (!text.starts_with("=?")) return std::nullopt;
  const std::size_t charsetEnd = text.find('?', 2);
  if (charsetEnd == std::string_view::npos || charsetEnd + 3 > text.size()) return std::nullopt;
  if (text[charsetEnd + 2] != '?') return std::nullopt;
  const std::size_t end = text.find("?=", charsetEnd + 3);
  if (end == std::string_view::npos) return std::nullopt;
  const Word word = {text.substr(2, charsetEnd - 2), UpperAscii(text[charsetEnd + 1]),
                     text.substr(charsetEnd + 3, end - charsetEnd - 3)};
  const bool isKnown = IsChinese(word.charset) || EqualAscii(word.charset, "utf-8");
  if (!isKnown || (word.encoding != 'B' && word.encoding != 'Q')) return std::nullopt;
  text.remove_prefix(end + 2);
  return word;
}

// Q is not quite quoted-printable: a blank is "_".
std::string DecodeQ(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned value = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '=' && i + 2 < text.size() &&
        std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
      bytes += static_cast<char>(value);
      i += 2;
    } else {
      bytes += text[i] == '_' ? ' ' : text[i];
    }
  }
  return bytes;
}

std::string BytesOf(const Word& word) {
  return word.encoding == 'B' ? DecodeBase64(word.text) : DecodeQ(word.text);
}

// In a set that is not named, or not known.
std::string Guess(std::string_view bytes) { return text::Decode(text::CharsetOf(bytes), bytes); }

// Words in a row whose bytes are converted together, since some programs divide a character.
class Words {
 public:
  void Add(const Word& word) {
    if (!EqualAscii(charset_, word.charset)) Flush();
    charset_ = word.charset;
    bytes_ += BytesOf(word);
  }
  void Flush() {
    text_ += IsChinese(charset_) ? text::FromGbk(bytes_) : Guess(bytes_);
    bytes_.clear();
  }
  void AddPlain(std::string_view text) {
    Flush();
    text_ += Guess(text);
  }
  std::string End() {
    Flush();
    return text_;
  }

 private:
  std::string_view charset_;
  std::string bytes_;
  std::string text_;
};

}  // namespace

std::string ShownSubject(std::string_view beginning) {
  const std::string field = SubjectField(beginning.substr(0, kSubjectSearch));
  std::string_view rest = field;
  Words words;
  bool followsWord = false;
  while (!rest.empty()) {
    if (const std::optional<Word> word = TakeWord(rest)) {
      words.Add(*word);
      followsWord = true;
      continue;
    }
    const std::size_t next = std::min(rest.find("=?", 1), rest.size());
    const std::string_view plain = rest.substr(0, next);
    rest.remove_prefix(next);
    // Blanks between two words belong to the encoding.
    const bool isBlank = plain.find_first_not_of(kBlanks) == std::string_view::npos;
    if (!followsWord || !isBlank || rest.empty()) words.AddPlain(plain);
    followsWord = false;
  }
  return words.End();
}

}  // namespace ModMail
