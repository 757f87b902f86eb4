#include "text/printable_text.h"

#include <algorithm>

#include "text/strings.h"
#include "text/utf8.h"

namespace text {
namespace {

// The C1 controls, U+0080 to U+009F.
bool IsTwoByteControl(std::string_view text) {
  return text.size() >= 2 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0;
}

// U+200E, U+200F, U+2028 to U+202E and U+2066 to U+2069.
bool IsThreeByteControl(std::string_view text) {
  if (text.size() < 3 || text[0] != '\xE2') return false;
  const auto last = static_cast<unsigned char>(text[2]);
  if (text[1] == '\x80') {
    return (last >= 0x8E && last <= 0x8F) || (last >= 0xA8 && last <= 0xAE);
  }
  return text[1] == '\x81' && last >= 0xA6 && last <= 0xA9;
}

// The length in bytes of the control character that `text` begins with; 0 if there is none.
std::size_t ControlLength(std::string_view text) {
  if (IsControl(text.front())) return 1;
  if (IsTwoByteControl(text)) return 2;
  return IsThreeByteControl(text) ? 3 : 0;
}

// No part of any control character.
bool IsPlain(char c) { return c >= ' ' && c < '\x7F'; }

std::string_view Cut(std::string_view text, std::size_t most) {
  // In bytes. A longer sequence is not UTF-8 and may be cut anywhere.
  constexpr std::size_t kLongestCharacter = 4;
  std::size_t end = std::min(text.size(), most);
  for (std::size_t i = 1; i < kLongestCharacter && end > 0 && end < text.size(); ++i) {
    if (!IsContinuation(text[end])) break;
    --end;
  }
  return text.substr(0, end);
}

}  // namespace

std::string Printable(std::string_view text, std::size_t most) {
  std::string_view rest = Cut(text, most);
  const bool isCut = rest.size() < text.size();
  std::string line;
  line.reserve(rest.size());
  while (!rest.empty()) {
    const std::size_t plain = PrefixLength(rest, IsPlain);
    line += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (rest.empty()) break;
    const std::size_t control = ControlLength(rest);
    line += control > 0 ? '?' : rest.front();
    rest.remove_prefix(std::max<std::size_t>(control, 1));
  }
  return isCut ? line + "…" : line;
}

}  // namespace text
