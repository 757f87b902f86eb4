#include "web/url_decoding.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "text/code_page.h"
#include "text/conversions.h"

namespace ModWeb {
namespace {

constexpr std::string_view kNeverPaired = ":/().,;%";

std::string ReplacePlus(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c == '+') c = ' ';
  }
  return result;
}

// The code of the escape whose digits begin at `digits`.
unsigned char EscapeCode(std::string_view text, std::size_t digits) {
  std::uint8_t code = 0;
  if (digits + 2 <= text.size()) {
    const char* begin = text.data() + digits;
    const auto [stop, error] = std::from_chars(begin, begin + 2, code, 16);
    if (error == std::errc() && stop == begin + 2) return code;
  }
  throw BadRequest("invalid URL escape at byte " + std::to_string(digits));
}

std::string SingleCharacter(unsigned char code) {
  constexpr unsigned char kFirstLeadByte = 0x80;  // half a character
  return code < kFirstLeadByte ? std::string(1, static_cast<char>(code)) : "?";
}

std::string DoubleByteCharacter(unsigned char lead, unsigned char trail) {
  return text::ToSystem(text::GbkCharacter(lead, trail).value_or("?"));
}

}  // namespace

std::string DecodeUrl(std::string_view encoded) {
  const std::string text = ReplacePlus(encoded);
  std::string decoded;
  std::size_t position = 0;
  while (true) {
    const std::size_t escape = text.find('%', position);
    decoded += std::string_view(text).substr(position, escape - position);
    if (escape == std::string::npos) return decoded;

    const unsigned char code = EscapeCode(text, escape + 1);
    const bool listed = kNeverPaired.find(static_cast<char>(code)) != std::string_view::npos;
    const bool paired = escape + 3 < text.size() && text[escape + 3] == '%' && !listed;
    if (paired) {
      decoded += DoubleByteCharacter(code, EscapeCode(text, escape + 4));
    } else {
      decoded += SingleCharacter(code);
    }
    position = escape + (paired ? 6 : 3);
  }
}

std::string ExtractPostBody(std::string_view request) {
  constexpr std::string_view kLengthHeader = "Content-Length: ";
  const std::size_t header = request.find(kLengthHeader);
  if (header == std::string_view::npos) return std::string(request);

  const std::size_t begin = header + kLengthHeader.size();
  const std::size_t end = request.find("\r\n", header);
  if (end == std::string_view::npos) throw BadRequest("Content-Length without a line end");
  const std::string_view value = request.substr(begin, end - begin);
  const auto length = text::ToInt16(value);
  if (!length) throw BadRequest("invalid Content-Length: " + std::string(value));
  if (*length <= 0) return std::string(request);

  std::string_view body = request;
  body.remove_prefix(body.size() - std::min(body.size(), static_cast<std::size_t>(*length)));
  if (body.ends_with("\r\n")) body.remove_suffix(2);
  return DecodeUrl(body);
}

}  // namespace ModWeb
