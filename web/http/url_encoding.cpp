#include "web/http/url_encoding.h"

namespace ModWeb {
namespace {

bool StandsForItself(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  const bool isDigit = c >= '0' && c <= '9';
  return isLetter || isDigit || std::string_view("/-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::string EncodeUrlPath(std::string_view path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(path.size());
  for (const char c : path) {
    if (StandsForItself(c)) {
      encoded += c;
      continue;
    }
    const auto code = static_cast<unsigned char>(c);
    encoded += {'%', kDigits[code >> 4], kDigits[code & 0xF]};
  }
  return encoded;
}

}  // namespace ModWeb
