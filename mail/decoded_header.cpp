#include "mail/decoded_header.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "mail/ascii_case.h"
#include "mail/base64.h"
#include "text/code_page.h"

namespace ModMail {
namespace {

constexpr std::string_view kBlanks = " \t";

// Longer than any that a program writes; RFC 2047 allows 75 characters. With many words that lack
// their end, searching all that follows would take quadratic time.
constexpr std::size_t kLongestWord = 2000;

// "=?charset?encoding?text?=", without its frame.
struct Word {
  std::string_view charset;
  char encoding = 0;
  std::string_view text;
};

// Takes the word that `text` begins with; none if that is no word.
std::optional<Word> TakeWord(std::string_view& text) {
  if (!text.starts_with("=?")) return std::nullopt;
  const std::string_view most = text.substr(0, kLongestWord);
  const std::size_t charsetEnd = most.find('?', 2);
  if (charsetEnd == std::string_view::npos || charsetEnd + 3 > most.size()) return std::nullopt;
  if (most[charsetEnd + 2] != '?') return std::nullopt;
  const std::size_t end = most.find("?=", charsetEnd + 3);
  if (end == std::string_view::npos) return std::nullopt;
  std::string_view charset = most.substr(2, charsetEnd - 2);
  charset = charset.substr(0, charset.find('*'));  // a language may follow
  const Word word = {charset, UpperAscii(most[charsetEnd + 1]),
                     most.substr(charsetEnd + 3, end - charsetEnd - 3)};
  if (word.encoding != 'B' && word.encoding != 'Q') return std::nullopt;
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

// Words in a row whose bytes are converted together, since some programs divide a character.
class Words {
 public:
  void Add(const Word& word) {
    if (!EqualAscii(charset_, word.charset)) Flush();
    charset_ = word.charset;
    bytes_ += BytesOf(word);
  }
  void AddPlain(std::string_view text) {
    if (text.empty()) return;
    Flush();
    text_ += text::FromNamed("", text);
  }
  std::string End() {
    Flush();
    return text_;
  }

 private:
  void Flush() {
    text_ += text::FromNamed(charset_, bytes_);
    bytes_.clear();
  }

  std::string_view charset_;
  std::string bytes_;
  std::string text_;
};

}  // namespace

std::string DecodedHeader(std::string_view value) {
  Words words;
  bool followsWord = false;
  std::string_view blanks;  // between two words they belong to the encoding
  while (!value.empty()) {
    if (const std::optional<Word> word = TakeWord(value)) {
      words.Add(*word);
      followsWord = true;
      blanks = {};
      continue;
    }
    const std::size_t next = std::min(value.find("=?", 1), value.size());
    const std::string_view plain = value.substr(0, next);
    value.remove_prefix(next);
    words.AddPlain(std::exchange(blanks, {}));
    const bool isBlank = plain.find_first_not_of(kBlanks) == std::string_view::npos;
    if (followsWord && isBlank) {
      blanks = plain;
    } else {
      words.AddPlain(plain);
    }
    followsWord = false;
  }
  words.AddPlain(blanks);
  return words.End();
}

}  // namespace ModMail
