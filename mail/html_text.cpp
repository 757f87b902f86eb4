#include "mail/html_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "mail/ascii_case.h"

namespace ModMail {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Elements that begin and end a line.
constexpr std::array<std::string_view, 16> kBlocks = {
    "div", "tr", "li",         "ul",      "ol",      "h1", "h2",  "h3",
    "h4",  "h5", "blockquote", "section", "article", "hr", "pre", "table"};
// Elements whose content is no text.
constexpr std::array<std::string_view, 4> kHidden = {"script", "style", "head", "title"};

template <class Names>
bool IsOneOf(const Names& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(),
                     [name](std::string_view each) { return EqualAscii(each, name); });
}

void AppendUtf8(std::string& text, unsigned code) {
  const auto byte = [&text](unsigned value) { text += static_cast<char>(value); };
  if (code < 0x80) return byte(code);
  if (code < 0x800) {
    byte(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) byte(0xE0 | code >> 12);
    if (code >= 0x10000) byte(0xF0 | code >> 18);
    if (code >= 0x10000) byte(0x80 | (code >> 12 & 0x3F));
    byte(0x80 | (code >> 6 & 0x3F));
  }
  byte(0x80 | (code & 0x3F));
}

// The number of "#20320" or "#x4f60"; none if it is no character.
std::optional<unsigned> CodeOf(std::string_view name) {
  if (!name.starts_with('#')) return std::nullopt;
  name.remove_prefix(1);
  const bool isHex = name.starts_with('x') || name.starts_with('X');
  if (isHex) name.remove_prefix(1);
  unsigned code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, isHex ? 16 : 10);
  const bool isWhole = error == std::errc() && end == name.data() + name.size();
  const bool isSurrogate = code >= 0xD800 && code < 0xE000;
  if (!isWhole || code == 0 || isSurrogate || code > 0x10FFFF) return std::nullopt;
  return code;
}

std::optional<std::string> CharacterOf(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 16> kNames = {
      {{"amp", "&"},
       {"lt", "<"},
       {"gt", ">"},
       {"quot", "\""},
       {"apos", "'"},
       {"nbsp", " "},
       {"copy", "©"},
       {"reg", "®"},
       {"middot", "·"},
       {"hellip", "…"},
       {"mdash", "—"},
       {"ndash", "–"},
       {"ldquo", "“"},
       {"rdquo", "”"},
       {"lsquo", "‘"},
       {"rsquo", "’"}}};
  for (const auto& [known, character] : kNames) {
    if (known == name) return std::string(character);
  }
  const std::optional<unsigned> code = CodeOf(name);
  if (!code) return std::nullopt;
  std::string character;
  AppendUtf8(character, *code);
  return character;
}

class Writer {
 public:
  // Blanks in a row are one.
  void Add(std::string_view character) {
    if (character.size() == 1 && kBlanks.find(character[0]) != std::string_view::npos) {
      blank_ = !atLineStart_;
      return;
    }
    if (blank_) text_ += ' ';
    blank_ = false;
    atLineStart_ = false;
    text_ += character;
  }

  void EndLine() {
    if (!atLineStart_) text_ += '\n';
    atLineStart_ = true;
    blank_ = false;
  }

  // At most one empty line in a row.
  void BreakLine() {
    if (!text_.empty() && !text_.ends_with("\n\n")) text_ += '\n';
    atLineStart_ = true;
    blank_ = false;
  }

  std::string End() {
    const std::size_t last = text_.find_last_not_of(kBlanks);
    text_.resize(last == std::string::npos ? 0 : last + 1);
    return std::move(text_);
  }

 private:
  std::string text_;
  bool atLineStart_ = true;
  bool blank_ = false;
};

class Page {
 public:
  explicit Page(std::string_view html) : rest_(html) {}

  std::string Text() {
    while (!rest_.empty()) {
      if (rest_.front() == '<' && TakeTag()) continue;
      if (rest_.front() == '&' && TakeEntity()) continue;
      writer_.Add(rest_.substr(0, 1));
      rest_.remove_prefix(1);
    }
    return writer_.End();
  }

 private:
  // False if "<" is only a character.
  bool TakeTag() {
    if (rest_.starts_with("<!--")) {
      SkipPast("-->");
      return true;
    }
    const std::string_view inside = rest_.substr(1);
    const bool closes = inside.starts_with('/');
    const std::string_view name = NameOf(inside.substr(closes ? 1 : 0));
    if (name.empty() && !closes && !inside.starts_with('!') && !inside.starts_with('?')) {
      return false;
    }
    SkipPast(">");
    if (IsOneOf(kHidden, name) && !closes) SkipElement(name);
    const bool isParagraph = EqualAscii(name, "p");
    if (isParagraph || IsOneOf(kBlocks, name)) writer_.EndLine();
    if (isParagraph || EqualAscii(name, "br")) writer_.BreakLine();
    if (EqualAscii(name, "td") || EqualAscii(name, "th")) writer_.Add(" ");
    return true;
  }

  // Empty if `text` does not begin with one: "<3" is text.
  static std::string_view NameOf(std::string_view text) {
    const auto isLetter = [](char c) { return UpperAscii(c) >= 'A' && UpperAscii(c) <= 'Z'; };
    const auto isOfName = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); };
    if (text.empty() || !isLetter(text.front())) return {};
    const auto end = std::find_if_not(text.begin(), text.end(), isOfName);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
  }

  // To the closing tag, which is then taken like any other. An element that does not end takes the
  // rest, so each search is in text that is then skipped.
  void SkipElement(std::string_view name) {
    while (!rest_.empty()) {
      rest_.remove_prefix(std::min(rest_.find('<'), rest_.size()));
      if (rest_.starts_with("</") && EqualAscii(NameOf(rest_.substr(2)), name)) return;
      if (!rest_.empty()) rest_.remove_prefix(1);
    }
  }

  void SkipPast(std::string_view end) {
    const std::size_t found = rest_.find(end);
    rest_.remove_prefix(found == std::string_view::npos ? rest_.size() : found + end.size());
  }

  bool TakeEntity() {
    constexpr std::size_t kLongest = 12;
    const std::size_t end = rest_.substr(0, kLongest).find(';');
    if (end == std::string_view::npos) return false;
    const std::optional<std::string> character = CharacterOf(rest_.substr(1, end - 1));
    if (!character) return false;
    writer_.Add(*character);
    rest_.remove_prefix(end + 1);
    return true;
  }

  std::string_view rest_;
  Writer writer_;
};

}  // namespace

std::string TextOfHtml(std::string_view html) { return Page(html).Text(); }

}  // namespace ModMail
