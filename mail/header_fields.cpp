#include "mail/header_fields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <map>
#include <utility>
#include <vector>

#include "mail/ascii_case.h"
#include "mail/decoded_header.h"
#include "mail/part_header.h"
#include "text/code_page.h"

namespace ModMail {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kMostPieces = 100;

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return WithoutLineEnd(line);
}

bool IsFieldNamed(std::string_view line, std::string_view name) {
  return StartsWithAscii(line, name) && line.substr(name.size()).starts_with(':');
}

// A quoted text, its quotation marks removed from `rest`, too.
std::string TakeQuoted(std::string_view& rest) {
  std::string text;
  std::size_t i = 1;
  for (; i < rest.size() && rest[i] != '"'; ++i) {
    // Some programs write the paths of Windows here, unescaped; of these a separator is lost.
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    text += rest[i];
  }
  rest.remove_prefix(std::min(i + 1, rest.size()));
  return text;
}

struct Parameter {
  std::string_view name;
  std::string text;
};

// Takes the parameter that follows the next ";". None if there is none.
std::optional<Parameter> TakeParameter(std::string_view& rest) {
  const std::size_t semicolon = rest.find(';');
  if (semicolon == std::string_view::npos) return std::nullopt;
  rest.remove_prefix(semicolon + 1);
  const std::size_t end = rest.find_first_of("=;");
  Parameter parameter{Trimmed(rest.substr(0, end)), {}};
  if (end == std::string_view::npos || rest[end] == ';') {
    rest.remove_prefix(std::min(end, rest.size()));
    return parameter;
  }
  rest.remove_prefix(end + 1);
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  if (rest.starts_with('"')) {
    parameter.text = TakeQuoted(rest);
    return parameter;
  }
  const std::size_t next = std::min(rest.find(';'), rest.size());
  parameter.text = Trimmed(rest.substr(0, next));
  rest.remove_prefix(next);
  return parameter;
}

std::optional<unsigned> Number(std::string_view digits, int base = 10) {
  unsigned value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [last, error] = std::from_chars(digits.data(), end, value, base);
  if (error != std::errc() || last != end) return std::nullopt;
  return value;
}

std::string DecodePercent(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto value =
        text[i] == '%' && i + 2 < text.size() ? Number(text.substr(i + 1, 2), 16) : std::nullopt;
    bytes += value ? static_cast<char>(*value) : text[i];
    if (value) i += 2;
  }
  return bytes;
}

// A parameter in pieces (name*0, name*1*): RFC 2231.
class Pieces {
 public:
  // `suffix`: what follows the parameter's name.
  void Add(std::string_view suffix, std::string text) {
    const bool isEncoded = suffix.ends_with('*');
    if (isEncoded) suffix.remove_suffix(1);
    const auto number = suffix.empty() ? 0U : Number(suffix.substr(1));
    if (!number || pieces_.size() >= kMostPieces) return;
    if (isEncoded && *number == 0) text = TakeCharset(text);
    pieces_.emplace(*number, isEncoded ? DecodePercent(text) : text);
  }

  bool IsEmpty() const { return pieces_.empty(); }

  std::string Joined() const {
    std::string bytes;
    for (const auto& [number, piece] : pieces_) bytes += piece;
    return text::FromNamed(charset_, bytes);
  }

 private:
  // "gb2312'zh'text"
  std::string TakeCharset(const std::string& text) {
    const std::size_t first = text.find('\'');
    const std::size_t second = first == text.npos ? first : text.find('\'', first + 1);
    if (second == text.npos) return text;
    charset_ = text.substr(0, first);
    return text.substr(second + 1);
  }

  std::string charset_;
  std::map<unsigned, std::string> pieces_;
};

std::vector<std::string_view> WordsOf(std::string_view text) {
  constexpr std::size_t kMost = 8;
  std::vector<std::string_view> words;
  while (words.size() < kMost) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) break;
    text.remove_prefix(begin);
    words.push_back(text.substr(0, text.find_first_of(kBlanks)));
    text.remove_prefix(words.back().size());
  }
  return words;
}

std::optional<unsigned> Month(std::string_view word) {
  constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  for (unsigned i = 0; i < kMonths.size(); ++i) {
    if (StartsWithAscii(word, kMonths[i])) return i + 1;
  }
  return std::nullopt;
}

// "23:59" or "23:59:60"
std::optional<std::chrono::seconds> TimeOfDay(std::string_view word) {
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::size_t second = std::min(word.find(':', colon + 1), word.size());
  const auto hours = Number(word.substr(0, colon));
  const auto minutes = Number(word.substr(colon + 1, second - colon - 1));
  const auto seconds = second < word.size() ? Number(word.substr(second + 1)) : 0U;
  if (!hours || !minutes || !seconds) return std::nullopt;
  if (*hours > 23 || *minutes > 59 || *seconds > 60) return std::nullopt;
  return std::chrono::hours(*hours) + std::chrono::minutes(*minutes) +
         std::chrono::seconds(*seconds);
}

// "+0800"; other names of zones count as UTC.
std::chrono::minutes ZoneOffset(std::string_view word) {
  const auto number = word.size() == 5 ? Number(word.substr(1)) : std::nullopt;
  if (!number || (word[0] != '+' && word[0] != '-')) return {};
  const std::chrono::minutes offset(*number / 100 * 60 + *number % 100);
  return word[0] == '-' ? -offset : offset;
}

}  // namespace

std::string HeaderField(std::string_view header, std::string_view name) {
  std::string value;
  bool isFound = false;
  while (!header.empty()) {
    const std::string_view line = TakeLine(header);
    if (line.empty()) break;
    const bool isFolded = kBlanks.find(line.front()) != std::string_view::npos;
    if (isFound && !isFolded) break;
    if (isFound) value += line;
    if (isFound || isFolded || !IsFieldNamed(line, name)) continue;
    isFound = true;
    value = line.substr(line.find(':') + 1);
  }
  return value.erase(0, std::min(value.find_first_not_of(kBlanks), value.size()));
}

std::string HeaderParameter(std::string_view value, std::string_view name) {
  Pieces pieces;
  std::string plain;
  std::string_view rest = value;
  while (auto parameter = TakeParameter(rest)) {
    if (!StartsWithAscii(parameter->name, name)) continue;
    const std::string_view suffix = parameter->name.substr(name.size());
    if (suffix.empty() && plain.empty()) plain = std::move(parameter->text);
    if (suffix.starts_with('*')) pieces.Add(suffix, std::move(parameter->text));
  }
  return pieces.IsEmpty() ? DecodedHeader(plain) : pieces.Joined();
}

std::string HeaderWord(std::string_view value) {
  std::string word(Trimmed(value.substr(0, value.find(';'))));
  for (char& c : word) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return word;
}

std::optional<text::WallTime> MailDate(std::string_view value) {
  using std::chrono::day, std::chrono::month, std::chrono::year;
  const std::size_t comma = value.find(',');  // behind the day of the week
  if (comma != std::string_view::npos) value.remove_prefix(comma + 1);
  const std::vector<std::string_view> words = WordsOf(value);
  if (words.size() < 4) return std::nullopt;
  const auto dayNumber = Number(words[0]);
  const auto monthNumber = Month(words[1]);
  auto yearNumber = Number(words[2]);
  const auto time = TimeOfDay(words[3]);
  if (!dayNumber || !monthNumber || !yearNumber || !time) return std::nullopt;
  if (*yearNumber < 100) *yearNumber += *yearNumber < 50 ? 2000 : 1900;
  // The clocks of some systems end in 2262.
  if (*yearNumber < 1970 || *yearNumber > 2200) return std::nullopt;
  const std::chrono::year_month_day date(year(static_cast<int>(*yearNumber)), month(*monthNumber),
                                         day(*dayNumber));
  if (!date.ok()) return std::nullopt;
  const auto offset = words.size() > 4 ? ZoneOffset(words[4]) : std::chrono::minutes();
  return std::chrono::sys_days(date) + *time - offset;
}

bool LooksLikeField(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  return std::all_of(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(colon), [](char c) {
    return c == '-' || c == '_' || c == '.' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           (c >= '0' && c <= '9');
  });
}

}  // namespace ModMail
