#include "text/code_page.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/ascii.h"
#include "text/utf8.h"

namespace text {
namespace {

using platform::Charset;
using platform::IsAscii;

bool IsValidIn(Charset charset, std::string_view bytes) {
  if (charset == Charset::kUtf8) return IsValidUtf8(bytes);
  bool lossless = false;
  platform::ToUtf8(charset, bytes, &lossless);
  return lossless;
}

// The length of the sequence that `lead` begins; 0 if it cannot begin one.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

bool IsSequence(std::string_view bytes, std::size_t length) {
  if (length == 0 || bytes.size() < length) return false;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(bytes[i])) return false;
  }
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const auto second = static_cast<unsigned char>(length > 1 ? bytes[1] : 0);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool outside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return !overlong && !outside;
}

// The length of the valid UTF-8 that `bytes` begins with.
std::size_t ValidLength(std::string_view bytes) {
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const std::size_t length = SequenceLength(static_cast<unsigned char>(rest[0]));
    if (!IsSequence(rest, length)) break;
    rest.remove_prefix(length);
  }
  return bytes.size() - rest.size();
}

// UTF-8 comes first: UTF-8 text is often valid GBK too, but hardly ever the other way round.
std::optional<Charset> FittingCharset(std::string_view bytes) {
  if (IsAscii(bytes)) return platform::SystemCharset();
  for (const Charset charset : {Charset::kUtf8, platform::SystemCharset(), Charset::kGbk}) {
    if (IsValidIn(charset, bytes)) return charset;
  }
  return std::nullopt;
}

}  // namespace

std::string FromSystem(std::string_view bytes) { return Decode(platform::SystemCharset(), bytes); }

std::string ToSystem(std::string_view text) { return Encode(platform::SystemCharset(), text); }

std::optional<std::string> GbkCharacter(unsigned char lead, unsigned char trail) {
  const std::array<char, 2> bytes = {static_cast<char>(lead), static_cast<char>(trail)};
  bool lossless = false;
  std::string text = platform::ToUtf8(Charset::kGbk, {bytes.data(), bytes.size()}, &lossless);
  // Two single-byte characters are not a double-byte one.
  const bool single = lead < 0x80;
  if (!lossless || single) return std::nullopt;
  return text;
}

std::string FromGbk(std::string_view bytes) { return platform::ToUtf8(Charset::kGbk, bytes); }

bool IsValidUtf8(std::string_view bytes) { return ValidLength(bytes) == bytes.size(); }

std::string FromNamed(std::string_view charset, std::string_view bytes) {
  if (auto text = platform::NamedToUtf8(charset, bytes)) return *std::move(text);
  return Decode(CharsetOf(bytes), bytes);
}

Charset CharsetOf(std::string_view fileBytes) {
  if (fileBytes.starts_with(kByteOrderMark)) return Charset::kUtf8;
  return FittingCharset(fileBytes).value_or(platform::SystemCharset());
}

std::string DecodeLines(std::string_view fileBytes) {
  if (FittingCharset(fileBytes)) return DecodeFile(fileBytes);
  std::string text;
  while (!fileBytes.empty()) {
    const std::size_t end = std::min(fileBytes.find('\n'), fileBytes.size() - 1) + 1;
    text += DecodeFile(fileBytes.substr(0, end));
    fileBytes.remove_prefix(end);
  }
  return text;
}

std::string Decode(Charset charset, std::string_view bytes) {
  if (charset == Charset::kUtf8) return std::string(bytes);
  return platform::ToUtf8(charset, bytes, nullptr, platform::Invalid::kKept);
}

std::string Encode(Charset charset, std::string_view text, bool* lossless) {
  if (lossless != nullptr) *lossless = true;
  if (charset == Charset::kUtf8) return std::string(text);
  std::size_t valid = ValidLength(text);
  std::string bytes = platform::FromUtf8(charset, text.substr(0, valid), lossless);
  while (valid < text.size()) {
    if (lossless != nullptr) *lossless = false;
    bytes += text[valid];
    text.remove_prefix(valid + 1);
    valid = ValidLength(text);
    bytes += platform::FromUtf8(charset, text.substr(0, valid));
  }
  return bytes;
}

std::string EncodeFile(std::string_view text) {
  bool lossless = false;
  std::string bytes = Encode(platform::SystemCharset(), text, &lossless);
  return lossless && DecodeFile(bytes) == text ? bytes : std::string(text);
}

std::string DecodeFile(std::string_view fileBytes) {
  const Charset charset = CharsetOf(fileBytes);
  if (fileBytes.starts_with(kByteOrderMark)) fileBytes.remove_prefix(kByteOrderMark.size());
  return Decode(charset, fileBytes);
}

}  // namespace text
