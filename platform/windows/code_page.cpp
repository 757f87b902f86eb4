#include "platform/code_page.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

UINT NumberOf(Charset charset) { return charset == Charset::kGbk ? 936 : 54936; }

// One double-byte or single-byte character at the front of `bytes`, as many bytes as it has.
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

std::string ToUtf8(Charset charset, std::string_view bytes, bool* lossless) {
  if (lossless != nullptr) *lossless = true;
  if (bytes.empty()) return {};
  const std::wstring whole = Widen(charset, bytes, MB_ERR_INVALID_CHARS);
  if (!whole.empty()) return NarrowText(whole);

  // The system's own replacement would be another character than "?": go character by character.
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(charset, bytes);
    const std::wstring wide = Widen(charset, bytes.substr(0, length), MB_ERR_INVALID_CHARS);
    text += wide.empty() ? "?" : NarrowText(wide);
    if (wide.empty() && lossless != nullptr) *lossless = false;
    bytes.remove_prefix(wide.empty() ? 1 : length);
  }
  return text;
}

std::string FromUtf8(Charset charset, std::string_view text) {
  if (text.empty()) return {};
  const std::wstring wide = WideText(text);
  const UINT number = NumberOf(charset);
  // Code page 54936 takes no replacement of our own; there is nothing that it does not hold.
  const char* replacement = number == 936 ? "?" : nullptr;
  const int wideSize = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(number, 0, wide.data(), wideSize, nullptr, 0, replacement, nullptr);
  std::string bytes(static_cast<std::size_t>(std::max(size, 0)), '\0');
  WideCharToMultiByte(number, 0, wide.data(), wideSize, bytes.data(), size, replacement, nullptr);
  return bytes;
}

}  // namespace platform
