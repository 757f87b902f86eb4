#include "platform/code_page.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "platform/known_charsets.h"
#include "platform/windows/wide_text.h"

namespace platform {
namespace {

UINT NumberOf(Charset charset) { return charset == Charset::kGbk ? 936 : 54936; }

// The length in bytes of the single-byte or double-byte character that `bytes` begins with.
std::size_t CharacterLength(Charset charset, std::string_view bytes) {
  const bool pair = bytes.size() > 1 && IsDBCSLeadByteEx(NumberOf(charset), bytes[0]) != 0;
  return pair ? 2 : 1;
}

std::wstring Widen(Charset charset, std::string_view bytes, DWORD flags) {
  const int size = static_cast<int>(bytes.size());
  const int wideSize =
      MultiByteToWideChar(NumberOf(charset), flags, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(std::max(wideSize, 0)), L'\0');
  MultiByteToWideChar(NumberOf(charset), flags, bytes.data(), size, wide.data(), wideSize);
  return wide;
}

std::size_t CharacterUnits(std::wstring_view wide) {
  return wide.size() > 1 && IS_SURROGATE_PAIR(wide[0], wide[1]) ? 2 : 1;
}

// None if `wide` contains a character that the set lacks.
std::optional<std::string> Narrow(Charset charset, std::wstring_view wide) {
  const int wideSize = static_cast<int>(wide.size());
  const UINT number = NumberOf(charset);
  BOOL replaced = FALSE;
  // Code page 54936 represents every character and rejects this argument.
  BOOL* const asked = charset == Charset::kGbk ? &replaced : nullptr;
  // A letter must not lose its accent because the set has it only without.
  const DWORD flags = charset == Charset::kGbk ? WC_NO_BEST_FIT_CHARS : 0;
  const int size =
      WideCharToMultiByte(number, flags, wide.data(), wideSize, nullptr, 0, nullptr, asked);
  if (size <= 0 || replaced != FALSE) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(number, flags, wide.data(), wideSize, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace

Charset SystemCharset() {
  switch (GetACP()) {
    case 936:
      return Charset::kGbk;
    case 54936:
      return Charset::kGb18030;
    default:
      return Charset::kUtf8;
  }
}

std::string ToUtf8(Charset charset, std::string_view bytes, bool* lossless, Invalid invalid) {
  if (lossless != nullptr) *lossless = true;
  if (bytes.empty()) return {};
  const std::wstring whole = Widen(charset, bytes, MB_ERR_INVALID_CHARS);
  if (!whole.empty()) return NarrowText(whole);

  // The system's replacement character is not "?", so convert character by character.
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(charset, bytes);
    const std::wstring wide = Widen(charset, bytes.substr(0, length), MB_ERR_INVALID_CHARS);
    if (!wide.empty()) {
      text += NarrowText(wide);
      bytes.remove_prefix(length);
      continue;
    }
    text += invalid == Invalid::kKept ? bytes[0] : '?';
    if (lossless != nullptr) *lossless = false;
    bytes.remove_prefix(1);
  }
  return text;
}

// The system's replacement for what is invalid differs between sets; here it is "?".
std::optional<std::string> NamedToUtf8(std::string_view charset, std::string_view bytes) {
  const std::size_t index = IndexOfCharset(charset);
  if (index == kKnownCharsets.size() || IsValidCodePage(kKnownCharsets[index].codePage) == 0) {
    return std::nullopt;
  }
  const int size = static_cast<int>(bytes.size());
  const UINT number = kKnownCharsets[index].codePage;
  const int wideSize = MultiByteToWideChar(number, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(std::max(wideSize, 0)), L'\0');
  MultiByteToWideChar(number, 0, bytes.data(), size, wide.data(), wideSize);
  std::replace(wide.begin(), wide.end(), L'\xFFFD', L'?');
  return NarrowText(wide);
}

std::string FromUtf8(Charset charset, std::string_view text, bool* lossless) {
  const std::wstring wide = WideText(text);
  // Bytes that are not UTF-8 are already lost here.
  if (lossless != nullptr) *lossless = NarrowText(wide) == text;
  if (wide.empty()) return {};
  if (const auto whole = Narrow(charset, wide)) return *whole;
  if (lossless != nullptr) *lossless = false;
  // The system would replace a surrogate pair by two marks, so convert character by character.
  std::string bytes;
  for (std::wstring_view rest = wide; !rest.empty();) {
    const std::wstring_view character = rest.substr(0, CharacterUnits(rest));
    bytes += Narrow(charset, character).value_or("?");
    rest.remove_prefix(character.size());
  }
  return bytes;
}

}  // namespace platform
