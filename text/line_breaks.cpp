#include "text/line_breaks.h"

#include <utility>

#include "text/strings.h"
#include "text/utf8.h"

namespace text {
namespace {

constexpr std::string_view kNeverFirst = "，。、；：？！…％）」』】》〉”’,.;:?!%)]";
constexpr std::string_view kNeverLast = "（「『【《〈“‘([";

// From U+2E80 on, where the scripts without blanks begin.
bool IsIdeograph(std::string_view character) { return character >= "\xE2\xBA\x80"; }

bool IsAmong(std::string_view character, std::string_view list) {
  return list.find(character) != std::string_view::npos;
}

bool MayBreak(std::string_view before, std::string_view after) {
  if (before == " ") return true;
  if (after == " " || IsAmong(after, kNeverFirst) || IsAmong(before, kNeverLast)) return false;
  return IsIdeograph(before) || IsIdeograph(after);
}

std::string_view CharacterAt(std::string_view text, std::size_t position) {
  return text.substr(position, CharacterEnd(text, position) - position);
}

// The end of the shortest piece that begins at `begin` and may end a line.
std::size_t PieceEnd(std::string_view text, std::size_t begin) {
  while (true) {
    const std::string_view before = CharacterAt(text, begin);
    begin += before.size();
    if (begin == text.size() || MayBreak(before, CharacterAt(text, begin))) return begin;
  }
}

// Lines under construction.
class Lines {
 public:
  explicit Lines(const std::function<bool(const std::string&)>& fits) : fits_(fits) {}

  bool Append(std::string_view piece) {
    const std::string longer = line_ + std::string(piece);
    if (!fits_(std::string(TrimTrailingBlanks(longer)))) return false;
    line_ = longer;
    return true;
  }

  void Break() {
    if (!line_.empty()) lines_.emplace_back(TrimTrailingBlanks(line_));
    line_.clear();
  }

  // Fills lines with a piece that is longer than one.
  void AppendDivided(std::string_view piece) {
    for (std::size_t at = 0; at < piece.size();) {
      const std::string_view character = CharacterAt(piece, at);
      at += character.size();
      if (Append(character)) continue;
      Break();
      line_ = character;
    }
  }

  std::vector<std::string> Take() {
    Break();
    return std::move(lines_);
  }

 private:
  const std::function<bool(const std::string&)>& fits_;
  std::vector<std::string> lines_;
  std::string line_;
};

}  // namespace

std::vector<std::string> BrokenIntoLines(std::string_view text,
                                         const std::function<bool(const std::string&)>& fits) {
  Lines lines(fits);
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = PieceEnd(text, begin);
    const std::string_view piece = text.substr(begin, end - begin);
    begin = end;
    if (lines.Append(piece)) continue;
    lines.Break();
    if (!lines.Append(piece)) lines.AppendDivided(piece);
  }
  return lines.Take();
}

}  // namespace text
