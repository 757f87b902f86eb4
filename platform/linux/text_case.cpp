#include "platform/text_case.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>

#include "platform/ascii.h"

namespace platform {
namespace {

// Reads a character of two or three bytes. Returns 0 for anything else, which is copied as it is.
wint_t ReadCharacter(std::string_view text, std::size_t& length) {
  const auto byte = [text](std::size_t i) -> wint_t {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
  };
  const auto follows = [byte](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
  length = 1;
  if ((byte(0) & 0xE0) == 0xC0 && follows(1)) {
    length = 2;
    return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
  }
  if ((byte(0) & 0xF0) == 0xE0 && follows(1) && follows(2)) {
    length = 3;
    return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
  }
  return 0;
}

void AppendCharacter(std::string& text, wint_t character) {
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
  } else {
    text += static_cast<char>(0xE0 | character >> 12);
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
  }
  text += static_cast<char>(0x80 | (character & 0x3F));
}

locale_t UnicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

}  // namespace

std::string UpperCase(std::string_view text) {
  std::string upper;
  if (IsAscii(text) || UnicodeLocale() == nullptr) {
    upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperAscii);
    return upper;
  }
  upper.reserve(text.size());
  while (!text.empty()) {
    std::size_t length = 1;
    const wint_t character = ReadCharacter(text, length);
    const wint_t upperCharacter = character == 0 ? 0 : towupper_l(character, UnicodeLocale());
    if (upperCharacter >= 0x80 && upperCharacter < 0x10000) {
      AppendCharacter(upper, upperCharacter);
    } else if (length == 1) {
      upper += UpperAscii(text[0]);
    } else {
      upper.append(text.substr(0, length));
    }
    text.remove_prefix(length);
  }
  return upper;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  if (IsAscii(left) && IsAscii(right)) return EqualIgnoringAsciiCase(left, right);
  return left == right || UpperCase(left) == UpperCase(right);
}

}  // namespace platform
